// One finger and the keys. What holds:
//
// - A touch belongs to the control on which it went down until it is up, wherever it moves. The
//   control is held weakly: any listener may delete it, and with it the rest of the touch.
// - A press on nothing or on a disabled control has no target but is down all the same, so that its
//   moves reach nobody.
// - While a panel is being presented, everything is posted whole, as application events: all of it
//   waits, so it keeps its order and comes out as it would have without the presentation.
// - While a message box waits, the finger is followed at once, because the box wants it, and only
//   the telling of what went down on the form before is put off: the form must see its release, but
//   not in the middle of the call that shows the box.
// - LetGo makes everything under way void at once, by a new era: what was posted before it runs and
//   finds that it is of an older one.
//
// - The focus is the screen's. Only a keyboard brings it about, and what it does is done by the
//   action alone: no finger is down, so nobody hears of a press.
//
// - A soft key's own key holds the control that was shown when it went down, and lets that act when
//   it comes up.
//
// Releasing asks again whether the button may act (enabled, visible, finger inside): its listeners
// heard of the release just before and may have changed that.
#include "osp/ui/input.h"

#include <algorithm>
#include <utility>

#include <osp/ui/controls/button.h>

#include "osp/base/event_loop.h"
#include "osp/ui/access.h"
#include "osp/ui/hit.h"
#include "osp/ui/screen.h"

namespace Osp::Ui {

namespace {

Graphics::Point Clamped(Graphics::Point p) {
    return {std::clamp(p.x, 0, Screen::kSize.width - 1),
            std::clamp(p.y, 0, Screen::kSize.height - 1)};
}

Control* Locked(const std::weak_ptr<Control*>& target) {
    const auto control = target.lock();
    return control ? *control : nullptr;
}

bool MustWait() {
    return Base::EventLoop::Current().IsHoldingApplication() && !Screen::Current().HasModal();
}

bool IsBehindModal(const Control& control) {
    return Screen::Current().HasModal() && Screen::Current().IsOfApplication(control);
}

bool MayAct(const Controls::Button& button, Graphics::Point position) {
    return button.IsEnabled() && button.IsVisible() && button.GetScreenBounds().Contains(position);
}

void ShowPressed(Control& control, bool isPressed) {
    if (auto* button = dynamic_cast<Controls::Button*>(&control)) {
        Access::SetPressed(*button, isPressed);
    }
}

void TellPressed(Control& target, Graphics::Point position) {
    ForEachListener(target, Access::TouchListeners(target),
                    [&](ITouchEventListener& l) { l.OnTouchPressed(target, position); });
}

void TellMoved(Control& target, Graphics::Point position) {
    ForEachListener(target, Access::TouchListeners(target),
                    [&](ITouchEventListener& l) { l.OnTouchMoved(target, position); });
}

void TellReleased(Control& target, Graphics::Point position) {
    ForEachListener(target, Access::TouchListeners(target),
                    [&](ITouchEventListener& l) { l.OnTouchReleased(target, position); });
}

void Act(Controls::Button& button) {
    ForEachListener(button, Access::ActionListeners(button), [&](IActionEventListener& l) {
        l.OnActionPerformed(button, button.GetActionId());
    });
}

/// Null when the form has none there that is shown.
Controls::Button* ShownSoftkey(const Controls::Form& form, KeyCode keyCode) {
    using enum Controls::SoftkeyPosition;
    if (keyCode != KeyCode::kSoftKey0 && keyCode != KeyCode::kSoftKey1) return nullptr;
    Controls::Button* const key =
        Access::Softkey(form, keyCode == KeyCode::kSoftKey0 ? kLeft : kRight);
    return key != nullptr && key->GetShowState() ? key : nullptr;
}

void PressSoftkey(Controls::Button& softkey) {
    ShowPressed(softkey, false);
    if (softkey.GetShowState() && Screen::Current().TakesInput(softkey)) Act(softkey);
}

void TellReleasedAndAct(Control& target, Graphics::Point position) {
    const std::weak_ptr<Control*> alive = Access::Weak(target);
    TellReleased(target, position);
    if (alive.expired()) return;
    auto* const button = dynamic_cast<Controls::Button*>(&target);
    if (button != nullptr && MayAct(*button, position)) Act(*button);
}

}  // namespace

void Input::Later(Task task) {
    Base::EventLoop::Current().Post(Base::EventClass::kApplication,
                                    [this, era = era_, task = std::move(task)] {
                                        if (era == era_) task();
                                    });
}

void Input::Tell(const Target& target, Graphics::Point position, TouchEvent event) {
    Control* const control = Locked(target);
    if (control == nullptr) return;
    if (IsBehindModal(*control)) {
        return Later([this, target, position, event] { Tell(target, position, event); });
    }
    if (Screen::Current().TakesInput(*control)) event(*control, position);
}

void Input::Press(Graphics::Point position) {
    if (!Screen::Current().IsForeground()) return;
    if (MustWait()) return Later([this, position] { Press(position); });
    if (isDown_) return Move(position);
    isDown_ = true;
    // Whoever has a finger on the screen needs no ring.
    Screen::Current().SetFocus(nullptr);
    last_ = Clamped(position);
    target_.reset();
    Control* const found = Screen::Current().FindTouchableAt(last_);
    if (found == nullptr || !found->IsEnabled()) return;
    target_ = Access::Weak(*found);
    ShowPressed(*found, true);
    TellPressed(*found, last_);
}

void Input::Move(Graphics::Point position) {
    if (MustWait()) return Later([this, position] { Move(position); });
    if (!isDown_) return;
    last_ = Clamped(position);
    Control* const target = Locked(target_);
    if (target == nullptr) return;
    ShowPressed(*target, target->GetScreenBounds().Contains(last_));
    Tell(target_, last_, TellMoved);
}

void Input::Release(Graphics::Point position) {
    if (MustWait()) return Later([this, position] { Release(position); });
    Lift(Clamped(position), TellReleasedAndAct);
}

void Input::Cancel() {
    if (MustWait()) return Later([this] { Cancel(); });
    if (letGo_) letGo_();
    Lift(last_, TellReleased);
}

void Input::Lift(Graphics::Point position, TouchEvent event) {
    if (!isDown_) return;
    isDown_ = false;
    last_ = position;
    const Target target = std::exchange(target_, {});
    if (Control* const control = Locked(target)) ShowPressed(*control, false);
    Tell(target, position, event);
}

void Input::KeyPress(KeyCode keyCode) {
    if (!Screen::Current().IsForeground()) return;
    if (MustWait()) return Later([this, keyCode] { KeyPress(keyCode); });
    Controls::Form* const form = Screen::Current().GetCurrentForm();
    if (form == nullptr || Screen::Current().HasModal()) return;
    // A popup has the focus; the form may want to close it.
    if (Screen::Current().HasPopup() && keyCode != KeyCode::kBack) return;
    std::optional<Target>& held = heldKeys_[keyCode];
    if (Controls::Button* const softkey = ShownSoftkey(*form, keyCode)) {
        held = Access::Weak(*softkey);
        return ShowPressed(*softkey, true);
    }
    ForEachListener(*form, Access::KeyListeners(*form),
                    [&](IKeyEventListener& l) { l.OnKeyPressed(*form, keyCode); });
}

void Input::KeyRelease(KeyCode keyCode) {
    if (Base::EventLoop::Current().IsHoldingApplication()) {
        return Later([this, keyCode] { KeyRelease(keyCode); });
    }
    Controls::Form* const form = Screen::Current().GetCurrentForm();
    const auto held = heldKeys_.extract(keyCode);
    if (held.empty() || form == nullptr) return;
    if (held.mapped()) {
        auto* const softkey = dynamic_cast<Controls::Button*>(Locked(*held.mapped()));
        if (softkey != nullptr) PressSoftkey(*softkey);
        return;
    }
    ForEachListener(*form, Access::KeyListeners(*form),
                    [&](IKeyEventListener& l) { l.OnKeyReleased(*form, keyCode); });
}

void Input::FocusNext(bool backward) {
    if (!Screen::Current().IsForeground()) return;
    if (MustWait()) return Later([this, backward] { FocusNext(backward); });
    Screen& screen = Screen::Current();
    Container* const root = screen.GetInputRoot();
    if (root != nullptr) screen.SetFocus(NextButton(*root, screen.GetFocus(), backward));
}

void Input::Confirm() {
    if (!Screen::Current().IsForeground()) return;
    if (MustWait()) return Later([this] { Confirm(); });
    Screen& screen = Screen::Current();
    auto* const button = dynamic_cast<Controls::Button*>(screen.GetFocus());
    if (button == nullptr) return KeyPress(KeyCode::kCamera);
    if (IsReachable(*button, *screen.GetInputRoot())) Act(*button);
}

void Input::LetGo() {
    if (letGo_) letGo_();
    Screen::Current().SetFocus(nullptr);
    if (Control* const target = Locked(target_)) ShowPressed(*target, false);
    target_.reset();
    isDown_ = false;
    for (const auto& [keyCode, softkey] : heldKeys_) {
        Control* const control = softkey ? Locked(*softkey) : nullptr;
        if (control != nullptr) ShowPressed(*control, false);
    }
    heldKeys_.clear();
    ++era_;
}

}  // namespace Osp::Ui
