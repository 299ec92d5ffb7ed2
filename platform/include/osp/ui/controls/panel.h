// A rectangle that the application draws itself.
#pragma once

#include <osp/ui/container.h>

namespace Osp::Ui::Controls {

/// Derive from it and override OnDraw, or draw on its canvas.
class Panel : public Container {
  public:
    /// kInvalidArgument for an empty rectangle.
    result Construct(const Graphics::Rectangle& bounds);

    /// As every control's, and the frame with it has been presented when the call returns (after at
    /// most 50 ms; application events wait meanwhile), so that a picture shown before long work in
    /// the same event is seen.
    result Show() override;
};

}  // namespace Osp::Ui::Controls
