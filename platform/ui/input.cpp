#include "ui/input.h"

#include <algorithm>
#include <functional>

#include <osp/ui/controls/button.h>

#include "base/event_loop.h"
#include "ui/access.h"
#include "ui/screen.h"

namespace Osp::Ui {

namespace {

Graphics::Point Clamped(Graphics::Point p) {
    return {std::clamp(p.x, 0, Screen::kSize.width - 1),
            std::clamp(p.y, 0, Screen::kSize.height - 1)};
}

bool IsTouchable(const Control& control) {
    return dynamic_cast<const Controls::Button*>(&control) != nullptr ||
           !Access::TouchListeners(control).empty();
}

/// The topmost touchable control of the tree at `position`, which is relative to its parent.
Control* Find(Control& control, Graphics::Point position) {
    if (!control.GetShowState()) return nullptr;
    const Graphics::Rectangle& bounds = control.GetBounds();
    if (const auto* container = dynamic_cast<Container*>(&control)) {
        const Graphics::Point inside{position.x - bounds.x, position.y - bounds.y};
        const auto& children = container->GetControls();
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            if (Control* found = Find(**child, inside)) return found;
        }
    }
    return bounds.Contains(position) && IsTouchable(control) ? &control : nullptr;
}

void Later(std::function<void()> task) {
    Base::EventLoop::Current().Post(Base::EventClass::kApplication, std::move(task));
}

}  // namespace

bool Input::MustWait() const {
    return Base::EventLoop::Current().IsHoldingApplication() && !Screen::Current().HasModal();
}

Control* Input::Target() const {
    const auto target = target_.lock();
    return target ? *target : nullptr;
}

void Input::Press(Graphics::Point position) {
    if (MustWait()) return Later([this, position] { Press(position); });
    if (isDown_) return Move(position);
    isDown_ = true;
    last_ = Clamped(position);
    target_.reset();
    Container* const root = Screen::Current().GetInputRoot();
    Control* const found = root == nullptr ? nullptr : Find(*root, last_);
    if (found == nullptr || !found->IsEnabled()) return;
    target_ = Access::Weak(*found);
    if (auto* button = dynamic_cast<Controls::Button*>(found)) Access::SetPressed(*button, true);
    ForEachListener(*found, Access::TouchListeners(*found),
                    [&](ITouchEventListener& l) { l.OnTouchPressed(*found, last_); });
}

void Input::Move(Graphics::Point position) {
    if (MustWait()) return Later([this, position] { Move(position); });
    if (!isDown_) return;
    last_ = Clamped(position);
    Control* const target = Target();
    if (target == nullptr) return;
    if (auto* button = dynamic_cast<Controls::Button*>(target)) {
        Access::SetPressed(*button, target->GetScreenBounds().Contains(last_));
    }
    ForEachListener(*target, Access::TouchListeners(*target),
                    [&](ITouchEventListener& l) { l.OnTouchMoved(*target, last_); });
}

void Input::Release(Graphics::Point position) {
    if (MustWait()) return Later([this, position] { Release(position); });
    ReleaseAt(Clamped(position), true);
}

void Input::Cancel() {
    if (MustWait()) return Later([this] { Cancel(); });
    ReleaseAt(last_, false);
}

void Input::ReleaseAt(Graphics::Point position, bool mayAct) {
    if (!isDown_) return;
    isDown_ = false;
    last_ = position;
    Control* const target = Target();
    const std::weak_ptr<Control*> alive = target_;
    target_.reset();
    if (target == nullptr) return;
    auto* const button = dynamic_cast<Controls::Button*>(target);
    if (button != nullptr) Access::SetPressed(*button, false);
    ForEachListener(*target, Access::TouchListeners(*target),
                    [&](ITouchEventListener& l) { l.OnTouchReleased(*target, position); });
    if (button == nullptr || !mayAct || alive.expired() || !button->IsEnabled() ||
        !button->GetScreenBounds().Contains(position)) {
        return;
    }
    ForEachListener(*button, Access::ActionListeners(*button), [&](IActionEventListener& l) {
        l.OnActionPerformed(*button, button->GetActionId());
    });
}

void Input::KeyPress(KeyCode keyCode) {
    if (MustWait()) return Later([this, keyCode] { KeyPress(keyCode); });
    Controls::Form* const form = Screen::Current().GetCurrentForm();
    if (form == nullptr || Screen::Current().HasModal()) return;
    ForEachListener(*form, Access::KeyListeners(*form),
                    [&](IKeyEventListener& l) { l.OnKeyPressed(*form, keyCode); });
}

void Input::KeyRelease(KeyCode keyCode) {
    if (MustWait()) return Later([this, keyCode] { KeyRelease(keyCode); });
    Controls::Form* const form = Screen::Current().GetCurrentForm();
    if (form == nullptr || Screen::Current().HasModal()) return;
    ForEachListener(*form, Access::KeyListeners(*form),
                    [&](IKeyEventListener& l) { l.OnKeyReleased(*form, keyCode); });
}

}  // namespace Osp::Ui
