// The platform's own side of the control tree.
#pragma once

#include <memory>

#include <osp/ui/container.h>
#include <osp/ui/controls/button.h>
#include <osp/ui/controls/edit_area.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/controls/overlay_panel.h>
#include <osp/ui/controls/popup.h>

#include "osp/graphics/surface.h"

namespace Osp::Ui {

/// What the compositor and the input routing need to know of controls and applications do not.
class Access {
  public:
    static const std::shared_ptr<Graphics::Surface>& Picture(const Control& control) {
        return control.surface_;
    }
    /// Lets the control draw itself when it has asked for that or never has.
    static void DrawIfNeeded(Control& control);

    static std::weak_ptr<Control*> Weak(const Control& control) { return control.self_; }
    static const std::vector<ITouchEventListener*>& TouchListeners(const Control& control) {
        return control.touchListeners_;
    }
    static const std::vector<IKeyEventListener*>& KeyListeners(const Control& control) {
        return control.keyListeners_;
    }
    static void SetParent(Control& control, Container* parent) { control.parent_ = parent; }
    /// Bottom to top.
    static const std::vector<std::unique_ptr<Control>>& Children(const Container& container) {
        return container.controls_;
    }
    /// Takes `control` out of `container` at once; null when it is not there.
    static std::unique_ptr<Control> Release(Container& container, Control& control) {
        return container.Release(control);
    }
    /// Puts the control above its siblings.
    static void Raise(Control& control);

    /// The frame of the screen from here on.
    static Controls::Frame MakeFrame() { return Controls::Frame(); }

    static void SetPressed(Controls::Button& button, bool pressed) { button.SetPressed(pressed); }
    static const std::vector<IActionEventListener*>& ActionListeners(
        const Controls::Button& button) {
        return button.actionListeners_;
    }

    /// Null for a form without soft keys; the form's.
    static Controls::Button* Softkey(const Controls::Form& form,
                                     Controls::SoftkeyPosition position) {
        return form.SoftkeyAt(position);
    }

    /// Null before the area is constructed.
    static TextField* Field(const Controls::EditArea& area) { return area.field_.get(); }
    /// Puts the popup where it belongs with or without the screen's keyboard.
    static void Place(Controls::Popup& popup) { popup.Place(); }

    /// The panel's moving picture; null before the first.
    static const Graphics::Surface* VideoPicture(const Controls::OverlayPanel& panel);
    /// Its place inside the panel, once there is one.
    static Graphics::Point VideoPlace(const Controls::OverlayPanel& panel);
};

/// Calls `call` with every listener until the control ends: a listener may delete it.
template <class Listener, class Call>
void ForEachListener(const Control& control, std::vector<Listener*> listeners, Call call) {
    const std::weak_ptr<Control*> alive = Access::Weak(control);
    for (Listener* listener : listeners) {
        if (alive.expired()) return;
        call(*listener);
    }
}

}  // namespace Osp::Ui
