// A control that acts when it is tapped.
#pragma once

#include <vector>

#include <osp/graphics/bitmap.h>
#include <osp/graphics/color.h>
#include <osp/graphics/font.h>
#include <osp/ui/control.h>
#include <osp/ui/i_action_event_listener.h>

namespace Osp::Ui::Controls {

/// Follows the finger that went down on it: pressed while the finger is inside. Shows its picture
/// and, above that, its text.
class Button : public Control {
  public:
    /// `bounds` are in the parent, in pixels; kInvalidArgument for an empty rectangle.
    result Construct(const Graphics::Rectangle& bounds);

    /// The pictures of the idle and the pressed button, drawn at the top left; a disabled button
    /// shows the idle one at 45 % opacity. They redraw the button.
    void SetNormalBitmap(const Graphics::Bitmap& bitmap);
    void SetPressedBitmap(const Graphics::Bitmap& bitmap);

    /// One line in the middle of the button; empty, as at first, for none. All three redraw.
    void SetText(const Base::String& text);
    const Base::String& GetText() const { return text_; }
    void SetTextColor(const Graphics::Color& color);
    /// Default: bold, 24 pixels to the em. kInvalidArgument for an unconstructed font.
    result SetTextFont(const Graphics::Font& font);

    void SetActionId(int actionId) { actionId_ = actionId; }
    int GetActionId() const { return actionId_; }
    /// Not owned; outlives the button; adding one twice has no effect. Called after the touch
    /// listeners' release.
    void AddActionEventListener(IActionEventListener& listener);

    result OnDraw() override;

  protected:
    bool IsPressed() const { return pressed_; }
    /// The text in its font and place, in its own colour or in another.
    result DrawText(Graphics::Canvas& canvas) { return DrawText(canvas, textColor_); }
    result DrawText(Graphics::Canvas& canvas, const Graphics::Color& color);

  private:
    friend class Osp::Ui::Access;

    void SetPressed(bool pressed);

    int actionId_ = 0;
    bool pressed_ = false;
    Graphics::Bitmap normal_;
    Graphics::Bitmap down_;
    Base::String text_;
    Graphics::Font font_;
    Graphics::Color textColor_{0x40, 0x40, 0x40, 255};
    std::vector<IActionEventListener*> actionListeners_;  // not owned
};

}  // namespace Osp::Ui::Controls
