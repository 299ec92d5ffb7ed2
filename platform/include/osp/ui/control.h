// The base of everything on the screen.
#pragma once

#include <memory>
#include <vector>

#include <osp/base/collection/ilist.h>
#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/graphics/canvas.h>
#include <osp/graphics/dimension.h>
#include <osp/graphics/point.h>
#include <osp/graphics/rectangle.h>
#include <osp/ui/i_key_event_listener.h>
#include <osp/ui/i_touch_event_listener.h>

namespace Osp::Ui {

class Access;
class Container;
template <class T>
class WeakControl;

/// A node of the retained tree that is composited into the 800 x 480 screen. Every control has a
/// canvas of its own, which keeps what was last drawn. Loop thread only; may be deleted inside its
/// own callbacks. Touches go to the topmost shown control under them that is a button or has a
/// touch listener; a disabled one swallows them.
class Control : public Base::Object {
  public:
    ~Control() override;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    /// Position and size in the parent, in pixels.
    const Graphics::Rectangle& GetBounds() const { return bounds_; }
    /// Moves the control with what it holds, also beyond its parent, which does not clip it. Always
    /// succeeds, as all that is set here.
    result SetPosition(int x, int y);
    /// The same on the screen.
    Graphics::Rectangle GetScreenBounds() const;

    /// Whether the control is shown at all. Hiding takes effect with the next frame.
    virtual result SetShowState(bool shown);
    bool GetShowState() const { return shown_; }
    /// True for the controls of the current form while the application is in the foreground.
    virtual bool IsVisible() const;

    /// A disabled control hears of no touch, and a disabled button is dimmed. A finger that is on
    /// it already goes on being told, but does not make it act.
    result SetEnabled(bool enabled);
    bool IsEnabled() const { return enabled_; }

    /// Calls OnDraw now, here and in the controls inside, and returns its failure; the screen
    /// follows with Show or with the next frame.
    virtual result Draw();
    /// Brings what is drawn to the screen with the next frame and raises a shown control above its
    /// siblings. Never changes the show state.
    virtual result Show();
    /// Draws again before the next frame.
    void RequestRedraw();

    /// A canvas on the control's picture, owned by the caller; null when the control has no area.
    Graphics::Canvas* GetCanvasN();

    /// The name that a person would call the control by, for assistive technology and scripts.
    void SetName(const Base::String& name) { name_ = name; }
    const Base::String& GetName() const { return name_; }

    /// Queues an event for OnUserEventReceivedN. Takes `args` (may be null) and its elements; they
    /// are deleted unseen when the control is gone by the time of delivery. Always succeeds.
    result SendUserEvent(long requestId, Base::Collection::IList* args);

    /// Listeners are not owned and outlive the control. Adding one twice has no effect.
    void AddTouchEventListener(ITouchEventListener& listener);
    void AddKeyEventListener(IKeyEventListener& listener);

    /// Null outside the tree; not the caller's.
    Container* GetParent() const { return parent_; }

    /// Called when the control has been added to the frame; a failure undoes the adding.
    virtual result OnInitializing() { return result::kSuccess; }
    /// Called before the control leaves the frame for good.
    virtual result OnTerminating() { return result::kSuccess; }
    /// Draws the control's picture on its canvas.
    virtual result OnDraw() { return result::kSuccess; }
    /// The receiver owns `args`, which may be null. Returns whether it knew the request. This one
    /// knows none and deletes the arguments.
    virtual bool OnUserEventReceivedN(long requestId, Base::Collection::IList* args);

  protected:
    Control();
    void SetBounds(const Graphics::Rectangle& bounds) { bounds_ = bounds; }
    /// Marks the control's area for the next frame.
    void Invalidate();

  private:
    friend class Access;  // the platform's own side of the tree
    template <class T>
    friend class WeakControl;

    Graphics::Rectangle bounds_;
    Container* parent_ = nullptr;  // not owned; null outside the tree
    bool shown_ = true;
    bool enabled_ = true;
    bool needsDraw_ = true;
    Base::String name_;
    std::shared_ptr<Graphics::Surface> surface_;        // null until first drawn on
    std::vector<ITouchEventListener*> touchListeners_;  // not owned
    std::vector<IKeyEventListener*> keyListeners_;      // not owned
    std::shared_ptr<Control*> self_;  // weakly held by whoever must notice the end of this control
};

}  // namespace Osp::Ui
