#include <algorithm>
#include <memory>

#include <osp/ui/controls/button.h>

namespace Osp::Ui::Controls {

namespace {
constexpr int kDefaultTextSize = 29;  // the line of an em of 24
}

result Button::Construct(const Graphics::Rectangle& bounds) {
    if (bounds.IsEmpty()) return result::kInvalidArgument;
    SetBounds(bounds);
    return font_.Construct(Graphics::kFontStyleBold, kDefaultTextSize);
}

void Button::SetNormalBitmap(const Graphics::Bitmap& bitmap) {
    normal_ = bitmap;
    RequestRedraw();
}

void Button::SetPressedBitmap(const Graphics::Bitmap& bitmap) {
    down_ = bitmap;
    RequestRedraw();
}

void Button::SetText(const Base::String& text) {
    text_ = text;
    RequestRedraw();
}

void Button::SetTextColor(const Graphics::Color& color) {
    textColor_ = color;
    RequestRedraw();
}

result Button::SetTextFont(const Graphics::Font& font) {
    if (font.GetSize() <= 0) return result::kInvalidArgument;
    font_ = font;
    RequestRedraw();
    return result::kSuccess;
}

void Button::AddActionEventListener(IActionEventListener& listener) {
    if (!std::ranges::count(actionListeners_, &listener)) actionListeners_.push_back(&listener);
}

result Button::OnDraw() {
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    if (!canvas) return result::kSuccess;
    result r = canvas->Clear();
    const Graphics::Bitmap& bitmap = pressed_ && down_.GetWidth() > 0 ? down_ : normal_;
    if (Succeeded(r) && bitmap.GetWidth() > 0) r = canvas->DrawBitmap(Graphics::Point{}, bitmap);
    return Failed(r) || text_.IsEmpty() ? r : DrawText(*canvas);
}

result Button::DrawText(Graphics::Canvas& canvas, const Graphics::Color& color) {
    const result r = canvas.SetFont(font_);
    if (Failed(r)) return r;
    canvas.SetForegroundColor(color);
    const Graphics::Dimension size = canvas.MeasureText(text_);
    const auto [width, height] = GetBounds().Size();
    return canvas.DrawText({(width - size.width) / 2, (height - size.height) / 2}, text_);
}

void Button::SetPressed(bool pressed) {
    if (pressed_ == pressed) return;
    pressed_ = pressed;
    RequestRedraw();
}

}  // namespace Osp::Ui::Controls
