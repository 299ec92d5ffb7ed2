// The keyboard that a finger types on.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <osp/ui/container.h>
#include <osp/ui/controls/button.h>
#include <osp/ui/i_action_event_listener.h>

#include "osp/base/event_loop.h"
#include "osp/ui/text/keyboard_layout.h"

namespace Osp::Ui {

enum class ShiftState { kOff, kOnce, kLocked };

/// One key. It is touched all over its cell and seen inside.
class Key : public Controls::Button {
  public:
    Key(KeyPlace place, KeyPage page);

    const KeyPlace& Place() const { return place_; }
    KeyPage Page() const { return page_; }
    using Button::IsPressed;
    /// Capital letters, and on Shift itself its state.
    void SetShift(ShiftState shift);
    /// What it types now.
    std::u16string Typed() const;

    result OnDraw() override;

  private:
    KeyPlace place_;
    KeyPage page_;
    ShiftState shift_ = ShiftState::kOff;
};

/// The characters that a long press offers, in a row above the key.
class Alternatives : public Control {
  public:
    /// `characters` is not empty; as far as the screen allows, the first lies above `key`, whose
    /// bounds are the keyboard's.
    Alternatives(std::u16string characters, const Graphics::Rectangle& key);

    /// For a finger in the keyboard's own pixels; far below the key nothing is chosen.
    void Follow(Graphics::Point position);
    /// Empty when nothing is.
    std::u16string Chosen() const;

    result OnDraw() override;

  private:
    std::u16string characters_;
    Graphics::Rectangle key_;
    int chosen_ = 0;  // -1: none
};

/// Types into the area that has the focus. Keys show at touch-down that they are meant, and type
/// when the finger is lifted inside their cell.
class Keyboard : public Container, private ITouchEventListener, private IActionEventListener {
  public:
    explicit Keyboard(std::string_view language);
    ~Keyboard() override;

    /// Small letters again.
    void Reset();
    /// The finger is off, and nothing was meant.
    void LetGo();

    bool IsVisible() const override;
    result OnDraw() override;

  private:
    void OnTouchPressed(const Control& source, const Graphics::Point& position) override;
    void OnTouchMoved(const Control& source, const Graphics::Point& position) override;
    void OnTouchReleased(const Control& source, const Graphics::Point& position) override;
    void OnActionPerformed(const Control& source, int actionId) override;

    void AddKey(KeyPlace place, KeyPage page);
    void OnHeld();
    void RepeatDelete();
    void ShowAlternatives();
    void HideAlternatives();
    void Wait(Base::Duration delay, void (Keyboard::*task)());
    void Type(const std::u16string& text);
    void PressShift();
    void ShowPage(KeyPage page);
    void SetShift(ShiftState shift);

    const Letters& letters_;
    std::vector<Key*> keys_;  // of all pages; the container's
    KeyPage page_ = KeyPage::kLetters;
    ShiftState shift_ = ShiftState::kOff;
    Base::TimePoint shiftTime_{};           // of the last press of Shift
    const Key* held_ = nullptr;             // under the finger
    bool hasActed_ = false;                 // before the finger was lifted
    Alternatives* alternatives_ = nullptr;  // the container's; null when not shown
    Base::EventLoop::TimerId timer_ = 0;
};

}  // namespace Osp::Ui
