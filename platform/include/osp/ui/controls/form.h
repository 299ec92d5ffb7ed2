// A full screen of the application.
#pragma once

#include <osp/ui/container.h>
#include <osp/ui/orientation.h>

namespace Osp::Ui::Controls {

class Form : public Container {
  public:
    /// Covers the screen. `style` is a sum of form styles.
    result Construct(unsigned style);

    /// kUnsupported for anything but landscape: the screen does not turn.
    result SetOrientation(Orientation orientation);
    Orientation GetOrientation() const { return orientation_; }

    bool IsVisible() const override;

  private:
    Orientation orientation_ = Orientation::kNone;
};

}  // namespace Osp::Ui::Controls
