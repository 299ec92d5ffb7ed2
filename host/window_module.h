// The window, in a module of its own that is loaded at first use.
#pragma once

#include <memory>
#include <string>

#include "osp/ui/screen.h"

namespace Host {

/// A window with the screen in it, open from construction to destruction.
class Window {
  public:
    virtual ~Window() = default;
    virtual Osp::Ui::Presenter& GetPresenter() = 0;
};

/// What the module exports: a new window, the caller's, or null without a display.
using MakeWindowFunction = Window* (*)(bool isFullscreen);
inline constexpr const char* kMakeWindowSymbol = "KivoMakeWindow";

/// Null, with `error` saying why, when there is no display or the module is missing. The toolkit
/// takes tens of milliseconds to load, which headless runs do not pay.
std::unique_ptr<Window> OpenWindow(bool isFullscreen, std::string& error);

}  // namespace Host
