#include "osp/ui/hit.h"

#include <algorithm>
#include <tuple>
#include <vector>

#include "osp/ui/access.h"
#include "osp/ui/visible_controls.h"

namespace Osp::Ui {

namespace {

bool IsTouchable(const Control& control) {
    return dynamic_cast<const Controls::Button*>(&control) != nullptr ||
           !Access::TouchListeners(control).empty();
}

std::vector<Controls::Button*> ReachableButtons(Container& root) {
    std::vector<Controls::Button*> buttons;
    WalkShown(root, [&](Control& control) {
        auto* const button = dynamic_cast<Controls::Button*>(&control);
        if (button != nullptr && IsReachable(*button, root)) buttons.push_back(button);
    });
    std::ranges::sort(buttons, {}, [](const Controls::Button* button) {
        const Graphics::Rectangle bounds = button->GetScreenBounds();
        return std::tuple(bounds.y, bounds.x);
    });
    return buttons;
}

}  // namespace

Control* FindTouchable(Control& control, Graphics::Point position) {
    if (!control.GetShowState()) return nullptr;
    const Graphics::Rectangle& bounds = control.GetBounds();
    if (const auto* container = dynamic_cast<Container*>(&control)) {
        const Graphics::Point inside{position.x - bounds.x, position.y - bounds.y};
        const auto& children = Access::Children(*container);
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            if (Control* found = FindTouchable(**child, inside)) return found;
        }
    }
    return bounds.Contains(position) && IsTouchable(control) ? &control : nullptr;
}

bool IsIn(const Control& control, const Container* root) {
    const Control* ancestor = &control;
    while (ancestor != nullptr && ancestor != root) ancestor = ancestor->GetParent();
    return ancestor != nullptr;
}

bool IsReachable(const Controls::Button& button, Container& root) {
    const Graphics::Rectangle bounds = button.GetScreenBounds();
    const Graphics::Point middle{bounds.x + bounds.width / 2, bounds.y + bounds.height / 2};
    return button.IsEnabled() && FindTouchable(root, middle) == &button;
}

Controls::Button* NextButton(Container& root, const Control* current, bool backward) {
    std::vector<Controls::Button*> buttons = ReachableButtons(root);
    if (buttons.empty()) return nullptr;
    if (backward) std::ranges::reverse(buttons);
    const auto place = std::ranges::find(buttons, current);
    return place == buttons.end() || place + 1 == buttons.end() ? buttons.front() : *(place + 1);
}

}  // namespace Osp::Ui
