#include <algorithm>
#include <utility>

#include <osp/ui/container.h>

#include "osp/base/event_loop.h"
#include "osp/ui/access.h"

namespace Osp::Ui {

Container::~Container() {
    // Topmost first: later controls may refer to earlier ones.
    while (!controls_.empty()) controls_.pop_back();
}

result Container::AddControl(Control* control) {
    if (control == nullptr || control->GetParent() != nullptr || control == this) {
        return result::kInvalidArgument;
    }
    controls_.emplace(controls_.end() - pinned_, control);
    Access::SetParent(*control, this);
    Invalidate();
    return result::kSuccess;
}

result Container::PinControl(Control* control) {
    const result r = Container::AddControl(control);
    if (Succeeded(r)) ++pinned_;
    return r;
}

result Container::RemoveControl(Control& control) {
    std::unique_ptr<Control> released = Release(control);
    if (!released) return result::kObjectNotFound;
    Invalidate();
    Base::EventLoop::Current().DisposeLater(
        std::make_unique<Base::DisposableHolder<Control>>(std::move(released)));
    return result::kSuccess;
}

std::unique_ptr<Control> Container::Release(Control& control) {
    const auto place = std::ranges::find(controls_, &control, &std::unique_ptr<Control>::get);
    if (place == controls_.end()) return nullptr;
    if (place >= controls_.end() - pinned_) --pinned_;
    std::unique_ptr<Control> released = std::move(*place);
    controls_.erase(place);
    Access::SetParent(control, nullptr);
    return released;
}

result Container::Draw() {
    const result r = Control::Draw();
    for (const auto& control : controls_) {
        if (Failed(r)) break;
        if (control->GetShowState()) (void)control->Draw();
    }
    return r;
}

}  // namespace Osp::Ui
