// Text that a person writes.
#pragma once

#include <memory>

#include <osp/base/string.h>
#include <osp/ui/control.h>
#include <osp/ui/i_touch_event_listener.h>

namespace Osp::Ui {
class TextField;
class TextInput;
}  // namespace Osp::Ui

namespace Osp::Ui::Controls {

/// Any number of lines, which wrap and, where they are too many, scroll under a finger. A tap gives
/// it the focus and places the caret, a second one selects the word; what is typed, on a keyboard
/// or on that of the screen, replaces the selection.
class EditArea : public Control, private ITouchEventListener {
  public:
    EditArea();
    ~EditArea() override;

    /// `bounds` are in the parent, in pixels; kInvalidArgument for less than 64 x 64.
    result Construct(const Graphics::Rectangle& bounds);

    // What follows is for a constructed area; kInvalidState, or an empty text, before.

    /// The caret goes to the end. Of control characters only line ends and tabs are kept, and what
    /// goes beyond the limit is cut. Redraws.
    result SetText(const Base::String& text);
    Base::String GetText() const;
    result Clear() { return SetText(""); }
    /// In UTF-16 units; 2000 at first. Cuts a text that is longer. kInvalidArgument when negative.
    result SetLimitLength(int limit);

    result OnDraw() override;

  private:
    friend class Osp::Ui::Access;

    void OnTouchPressed(const Control& source, const Graphics::Point& position) override;
    void OnTouchMoved(const Control& source, const Graphics::Point& position) override;
    void OnTouchReleased(const Control& source, const Graphics::Point& position) override;

    struct Finger;

    std::unique_ptr<TextField> field_;  // null before construction
    std::unique_ptr<Finger> finger_;
};

}  // namespace Osp::Ui::Controls
