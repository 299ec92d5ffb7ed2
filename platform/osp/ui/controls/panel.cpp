#include <osp/ui/controls/panel.h>

#include "osp/ui/screen.h"

namespace Osp::Ui::Controls {

result Panel::Construct(const Graphics::Rectangle& bounds) {
    if (bounds.IsEmpty()) return result::kInvalidArgument;
    SetBounds(bounds);
    return result::kSuccess;
}

result Panel::Show() {
    const result r = Container::Show();
    if (Succeeded(r) && IsVisible()) Screen::Current().PresentNow();
    return r;
}

}  // namespace Osp::Ui::Controls
