#include <memory>

#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>

#include "osp/ui/controls/softkey.h"
#include "osp/ui/screen.h"

namespace Osp::Ui::Controls {

result Form::Construct(unsigned style) {
    if (style != 0 && style != kFormStyleSoftkeys) return result::kUnsupported;
    SetBounds({0, 0, Screen::kSize.width, Screen::kSize.height});
    if (style == 0 || softkeys_[0] != nullptr) return result::kSuccess;
    for (const SoftkeyPosition position : {SoftkeyPosition::kLeft, SoftkeyPosition::kRight}) {
        auto key = std::make_unique<Softkey>(position);
        const result r = PinControl(key.get());
        if (Failed(r)) return r;
        softkeys_[static_cast<std::size_t>(position)] = key.release();
    }
    return result::kSuccess;
}

Button* Form::SoftkeyAt(SoftkeyPosition position) const {
    return softkeys_[static_cast<std::size_t>(position)];
}

result Form::SetSoftkeyText(SoftkeyPosition position, const Base::String& text) {
    Button* const key = SoftkeyAt(position);
    if (key == nullptr) return result::kInvalidState;
    key->SetText(text);
    return key->SetShowState(!text.IsEmpty());
}

result Form::SetSoftkeyActionId(SoftkeyPosition position, int actionId) {
    Button* const key = SoftkeyAt(position);
    if (key == nullptr) return result::kInvalidState;
    key->SetActionId(actionId);
    return result::kSuccess;
}

result Form::AddSoftkeyActionListener(SoftkeyPosition position, IActionEventListener& listener) {
    Button* const key = SoftkeyAt(position);
    if (key == nullptr) return result::kInvalidState;
    key->AddActionEventListener(listener);
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
