// A full screen of the application.
#pragma once

#include <osp/ui/container.h>
#include <osp/ui/orientation.h>

namespace Osp::Ui::Controls {

/// Shown and given keys by its frame, which owns it once it has been added.
class Form : public Container {
  public:
    /// Covers the screen. `style` is 0; kUnsupported, leaving the form unconstructed, for anything
    /// else: this device has no soft keys to show.
    result Construct(unsigned style);

    /// kUnsupported for anything but landscape: the screen does not turn.
    result SetOrientation(Orientation orientation);
    Orientation GetOrientation() const { return orientation_; }

    bool IsVisible() const override;

  private:
    Orientation orientation_ = Orientation::kNone;
};

}  // namespace Osp::Ui::Controls
