#include <algorithm>
#include <memory>

#include <osp/ui/controls/button.h>

namespace Osp::Ui::Controls {

result Button::Construct(const Graphics::Rectangle& bounds) {
    if (bounds.IsEmpty()) return result::kInvalidArgument;
    SetBounds(bounds);
    return result::kSuccess;
}

void Button::SetNormalBitmap(const Graphics::Bitmap& bitmap) {
    normal_ = bitmap;
    RequestRedraw();
}

void Button::SetPressedBitmap(const Graphics::Bitmap& bitmap) {
    down_ = bitmap;
    RequestRedraw();
}

void Button::AddActionEventListener(IActionEventListener& listener) {
    if (!std::ranges::count(actionListeners_, &listener)) actionListeners_.push_back(&listener);
}

result Button::OnDraw() {
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    if (!canvas) return result::kSuccess;
    const result r = canvas->Clear();
    const Graphics::Bitmap& bitmap = pressed_ && down_.GetWidth() > 0 ? down_ : normal_;
    if (Failed(r) || bitmap.GetWidth() == 0) return r;
    return canvas->DrawBitmap(Graphics::Point{}, bitmap);
}

void Button::SetPressed(bool pressed) {
    if (pressed_ == pressed) return;
    pressed_ = pressed;
    RequestRedraw();
}

}  // namespace Osp::Ui::Controls
