// Mouse, touch and keys of the window, as one finger and the phone's keys.
#pragma once

#include <functional>
#include <gtk/gtk.h>

#include <osp/graphics/point.h>
#include <osp/ui/key_code.h>

#include "backends/window/text_method.h"

namespace Osp::Ui {

/// Everything is posted to the loop as a system event, in the order of arrival.
class WindowInput {
  public:
    /// Neither widget is owned; both outlive this object. `picture` shows the screen, letterboxed,
    /// and holds the widgets that lie over it: what is meant for outside views goes on to them.
    WindowInput(GtkWindow* window, GtkWidget* picture);

    /// What is held down is let go: its end may happen where the window does not hear of it.
    void LetGo();

  private:
    gboolean OnEvent(GdkEvent* event);
    gboolean OnKey(GtkEventController* keys, guint keyval, bool isPress);
    Graphics::Point ScreenPoint(GdkEvent* event) const;
    bool IsTracked(GdkEvent* event) const;
    bool IsForView(GdkEvent* event) const;
    bool IsForView(guint keyval) const;
    gboolean OnPress(GdkEvent* event);
    gboolean LeaveKey(GdkEvent* event);

    GtkWindow* window_;
    GtkWidget* picture_;
    TextMethod text_;
    GdkEventSequence* sequence_ = nullptr;  // of the finger that is down; null for the mouse
    bool isDown_ = false;
    KeyCode keyDown_ = KeyCode::kNone;
};

}  // namespace Osp::Ui
