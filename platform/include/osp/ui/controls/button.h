// A control that acts when it is tapped.
#pragma once

#include <array>
#include <vector>

#include <osp/graphics/bitmap.h>
#include <osp/ui/control.h>
#include <osp/ui/i_action_event_listener.h>

namespace Osp::Ui::Controls {

/// Follows the finger that went down on it: pressed while the finger is inside.
class Button : public Control {
  public:
    /// `bounds` are in the parent, in pixels; kInvalidArgument for an empty rectangle.
    result Construct(const Graphics::Rectangle& bounds);

    /// The pictures of the idle and the pressed button, drawn at the top left; a disabled button
    /// shows the idle one at 45 % opacity. They redraw the button.
    void SetNormalBitmap(const Graphics::Bitmap& bitmap);
    void SetPressedBitmap(const Graphics::Bitmap& bitmap);

    void SetActionId(int actionId) { actionId_ = actionId; }
    int GetActionId() const { return actionId_; }
    /// Not owned; outlives the button; adding one twice has no effect. Called after the touch
    /// listeners' release.
    void AddActionEventListener(IActionEventListener& listener);

    result OnDraw() override;

  protected:
    bool IsPressed() const { return pressed_; }

  private:
    friend class Osp::Ui::Access;

    void SetPressed(bool pressed);

    int actionId_ = 0;
    bool pressed_ = false;
    Graphics::Bitmap normal_;
    Graphics::Bitmap down_;
    std::vector<IActionEventListener*> actionListeners_;  // not owned
};

}  // namespace Osp::Ui::Controls
