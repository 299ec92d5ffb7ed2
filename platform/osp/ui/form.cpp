#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>

#include "osp/ui/screen.h"

namespace Osp::Ui::Controls {

result Form::Construct(unsigned style) {
    if (style != 0) return result::kUnsupported;
    SetBounds({0, 0, Screen::kSize.width, Screen::kSize.height});
    return result::kSuccess;
}

result Form::SetOrientation(Orientation orientation) {
    if (orientation != Orientation::kLandscape) return result::kUnsupported;
    orientation_ = orientation;
    return result::kSuccess;
}

bool Form::IsVisible() const {
    const auto* const frame = static_cast<const Frame*>(GetParent());
    return Control::IsVisible() && frame != nullptr && frame->GetCurrentForm() == this;
}

}  // namespace Osp::Ui::Controls
