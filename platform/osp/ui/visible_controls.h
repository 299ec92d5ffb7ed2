// The controls that a person sees, for reports and assistive technology.
#pragma once

#include <string>

#include <osp/ui/container.h>
#include <osp/ui/controls/button.h>
#include <osp/ui/controls/edit_area.h>
#include <osp/ui/controls/label.h>
#include <osp/ui/controls/popup.h>

#include "osp/ui/access.h"
#include "osp/ui/screen.h"

namespace Osp::Ui {

/// Calls `visit` with `control` and all inside it that are shown, topmost first.
template <class Visit>
void WalkShown(Control& control, const Visit& visit) {
    if (!control.GetShowState()) return;
    if (const auto* container = dynamic_cast<Container*>(&control)) {
        const auto& children = Access::Children(*container);
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            WalkShown(**child, visit);
        }
    }
    visit(control);
}

/// The same with everything on the screen.
template <class Visit>
void WalkScreen(const Visit& visit) {
    const auto roots = Screen::Current().GetRoots();
    for (auto root = roots.rbegin(); root != roots.rend(); ++root) WalkShown(**root, visit);
}

/// What stands on the control, else what a person would call it.
inline std::string TextOf(const Control& control) {
    if (const auto* label = dynamic_cast<const Controls::Label*>(&control)) {
        if (!label->GetText().IsEmpty()) return label->GetText().ToUtf8();
    }
    if (const auto* button = dynamic_cast<const Controls::Button*>(&control)) {
        if (!button->GetText().IsEmpty()) return button->GetText().ToUtf8();
    }
    if (const auto* popup = dynamic_cast<const Controls::Popup*>(&control)) {
        return popup->GetTitle().ToUtf8();
    }
    if (const auto* area = dynamic_cast<const Controls::EditArea*>(&control)) {
        return area->GetText().ToUtf8();
    }
    return control.GetName().ToUtf8();
}

}  // namespace Osp::Ui
