// Routes touches and keys to controls.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include <osp/graphics/point.h>
#include <osp/ui/control.h>
#include <osp/ui/key_code.h>

#include "osp/base/service.h"

namespace Osp::Ui {

/// The host feeds it from the loop. While a panel is being presented, input waits like every
/// application event; while a message box waits, only the box gets any, and what happens to a touch
/// or a key that went down before waits for the box's end. In the background there is no input.
class Input : public Service<Input> {
  public:
    /// Positions are clamped to the screen. One finger: a press while pressed moves it.
    void Press(Graphics::Point position);
    void Move(Graphics::Point position);
    void Release(Graphics::Point position);
    /// The finger was taken away by the system: what was pressed is released without an action.
    void Cancel();

    void KeyPress(KeyCode keyCode);
    /// Nothing for a key that the form has not seen pressed.
    void KeyRelease(KeyCode keyCode);

    /// Puts the focus on the next button that could be touched, or on the one before; on the first,
    /// or the last, when there is no focus. The next touch takes it away.
    void FocusNext(bool backward);
    /// The focused button acts, if it could be touched; without a focus, the camera key is pressed.
    /// KeyRelease of that key ends it in any case.
    void Confirm();

    /// What was touched goes from the screen: finger and keys are up as if they had never been
    /// down, and nobody is told. The focus goes, and input that still waits is dropped.
    void LetGo();
    /// `letGo` is called before the touch under way ends without having been meant, by Cancel or
    /// LetGo. Empty takes it away.
    void WatchLetGo(std::function<void()> letGo) { letGo_ = std::move(letGo); }

  private:
    using Task = std::function<void()>;
    using Target = std::weak_ptr<Control*>;
    using TouchEvent = void (*)(Control& target, Graphics::Point position);

    void Later(Task task);
    void Tell(const Target& target, Graphics::Point position, TouchEvent event);
    void Lift(Graphics::Point position, TouchEvent event);

    Target target_;  // what the finger went down on
    bool isDown_ = false;
    Graphics::Point last_;
    std::map<KeyCode, std::optional<Target>> heldKeys_;  // the soft key, if one acts for it
    std::function<void()> letGo_;
    unsigned era_ = 0;  // counts how often everything was let go
};

}  // namespace Osp::Ui
