// What the window's module offers.
#pragma once

#include <functional>

#include <osp/graphics/rectangle.h>

#include "osp/ui/screen.h"

typedef struct _GtkWidget GtkWidget;

namespace Osp::Ui {

/// A window with the screen in it, open from construction to destruction. Loop thread only.
class Window {
  public:
    virtual ~Window() = default;
    virtual Presenter& GetPresenter() = 0;

    /// Holds `widget` over the picture of the screen, and under what lies above outside views,
    /// until it is taken out, which comes before the window's end. `scaled` is told how many pixels
    /// of the window one of the screen is, at once and whenever that changes.
    virtual void AddWidget(GtkWidget* widget, std::function<void(double scale)> scaled) = 0;
    /// To that part of the screen, with the keyboard; empty hides it, as it is at first.
    virtual void PlaceWidget(GtkWidget* widget, const Graphics::Rectangle& place) = 0;
    virtual void RemoveWidget(GtkWidget* widget) = 0;
};

/// What the module exports: a new window, the caller's, or null without a display.
using MakeWindowFunction = Window* (*)(bool isFullscreen);
inline constexpr const char* kMakeWindowSymbol = "KivoMakeWindow";

}  // namespace Osp::Ui
