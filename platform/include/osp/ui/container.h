// A control that holds others.
#pragma once

#include <memory>
#include <vector>

#include <osp/ui/control.h>

namespace Osp::Ui {

/// Deletes what it holds, topmost first, when it ends.
class Container : public Control {
  public:
    ~Container() override;

    /// Adds `control` on top of those that are there, but below what a form pins, and takes it
    /// over. On failure (kInvalidArgument for null or for a control that has a parent) the caller
    /// still owns it.
    virtual result AddControl(Control* control);
    /// Takes `control` out and deletes it once the current event has been dispatched.
    /// kObjectNotFound, changing nothing, when it is not here.
    virtual result RemoveControl(Control& control);

    /// Draws this control and, unless that fails, the shown ones inside.
    result Draw() override;

  protected:
    /// Adds `control` like AddControl, to stay above all that is not pinned, whatever is raised.
    result PinControl(Control* control);

  private:
    friend class Access;

    std::unique_ptr<Control> Release(Control& control);

    std::vector<std::unique_ptr<Control>> controls_;  // bottom to top
    int pinned_ = 0;                                  // of them, the topmost
};

}  // namespace Osp::Ui
