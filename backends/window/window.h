// What the window's module offers.
#pragma once

#include "osp/ui/screen.h"

namespace Osp::Ui {

/// A window with the screen in it, open from construction to destruction. Loop thread only.
class Window {
  public:
    virtual ~Window() = default;
    virtual Presenter& GetPresenter() = 0;
};

/// What the module exports: a new window, the caller's, or null without a display.
using MakeWindowFunction = Window* (*)(bool isFullscreen);
inline constexpr const char* kMakeWindowSymbol = "KivoMakeWindow";

}  // namespace Osp::Ui
