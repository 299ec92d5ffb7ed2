// The 800 x 480 screen: what is on it, and when it is brought up to date.
#pragma once

#include <cairo.h>
#include <memory>
#include <vector>

#include <osp/graphics/dimension.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/controls/popup.h>
#include <osp/ui/key_code.h>
#include <osp/ui/weak_control.h>

#include "osp/base/owner.h"
#include "osp/base/service.h"
#include "osp/graphics/surface.h"
#include "osp/ui/outside_views.h"

namespace Osp::Ui {

class ModalLayer;

/// Where composed screens go: a window, or nowhere.
class Presenter {
  public:
    virtual ~Presenter() = default;
    /// The screen has changed since it was composed last.
    virtual void FrameWanted() = 0;
    /// Returns when the screen as it is now has been presented, or after 50 ms at the latest.
    virtual void PresentNow() = 0;
};

/// Loop thread only.
class Screen : public Service<Screen> {
  public:
    static constexpr Graphics::Dimension kSize{800, 480};

    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Neither is owned; null takes it away.
    void SetPresenter(Presenter* presenter) { presenter_ = presenter; }
    void SetFrame(Controls::Frame* frame) { frame_ = frame; }

    Controls::Form* GetCurrentForm() const;
    /// What gets touches, where no keyboard lies: the topmost layer above the forms, else the
    /// current form. May be null.
    Container* GetInputRoot() const;
    /// Whether `control` is of what gets touches.
    bool TakesInput(const Control& control) const;
    /// Whether `control` is the application's own: on the current form or on an open popup.
    bool IsOfApplication(const Control& control) const;
    /// The topmost control there that can be touched; null when there is none.
    Control* FindTouchableAt(Graphics::Point position) const;
    /// The current form and the layers above it, bottom to top.
    std::vector<Container*> GetRoots() const;

    /// Puts `popup` above those that are open, or takes it away. Not owned.
    void OpenPopup(Controls::Popup& popup);
    void ClosePopup(Controls::Popup& popup);
    bool HasPopup() const { return !popups_.empty(); }

    /// The keyboard that a finger types on, hidden at first. Not owned; null takes it away.
    void SetKeyboard(Container* keyboard);
    /// Popups make room for it.
    void ShowKeyboard(bool shown);
    /// It lies above everything, but not while a message box waits, which gets all input alone.
    bool IsKeyboardShown() const { return isKeyboardShown_; }

    void SetForeground(bool foreground);
    bool IsForeground() const { return foreground_; }

    /// The control that the keyboard acts on; a ring is drawn on it. Null for none.
    void SetFocus(Control* control);
    /// Null also while the control is not part of what gets input.
    Control* GetFocus() const;

    /// The control's area has to be composed anew; nothing happens for controls of other forms.
    void Damage(const Control& control);
    bool IsDamaged() const { return !cairo_region_is_empty(damage_.get()); }
    /// Brings the picture of the screen up to date. Valid until the next call.
    const Graphics::Surface& Compose();
    /// What is shown on the screen beside the picture, whose places follow with each picture.
    OutsideViews& GetOutsideViews() { return outside_; }
    const OutsideViews& GetOutsideViews() const { return outside_; }
    /// The view whose control takes input, and which keys are for that no button wants. Null when
    /// there is none.
    OutsideView* GetTypedInto() const;

    /// Presents what has been drawn before it returns.
    void PresentNow();

    /// Shows `layer` above everything and dispatches only what is not the application's until it
    /// has been answered. Returns at once in the background.
    void RunModal(ModalLayer& layer);
    /// Answers all layers that wait.
    void AnswerModals();
    bool HasModal() const { return !modals_.empty(); }

  private:
    using RegionOwner = Base::Owner<cairo_region_t, cairo_region_destroy>;

    void DamageAll();
    void FollowOutside();
    bool TakesKeyboardInput() const { return isKeyboardShown_ && modals_.empty(); }

    Controls::Frame* frame_ = nullptr;      // not owned
    Presenter* presenter_ = nullptr;        // not owned
    std::vector<Controls::Popup*> popups_;  // not owned; bottom to top
    Container* keyboard_ = nullptr;         // not owned
    bool isKeyboardShown_ = false;
    std::vector<ModalLayer*> modals_;  // not owned; each is on the stack of its RunModal
    WeakControl<Control> focus_;
    bool foreground_ = false;
    Graphics::Surface picture_;
    RegionOwner damage_;
    OutsideViews outside_;
};

}  // namespace Osp::Ui
