#include <memory>

#include <osp/ui/controls/label.h>

namespace Osp::Ui::Controls {

namespace {
constexpr int kDefaultTextSize = 24;
}

result Label::Construct(const Graphics::Rectangle& bounds, const Base::String& text) {
    if (bounds.IsEmpty()) return result::kInvalidArgument;
    SetBounds(bounds);
    text_ = text;
    return font_.Construct(Graphics::kFontStylePlain, kDefaultTextSize);
}

void Label::SetBackgroundBitmap(const Graphics::Bitmap& bitmap) {
    bitmap_ = bitmap;
    RequestRedraw();
}

void Label::SetText(const Base::String& text) {
    text_ = text;
    RequestRedraw();
}

result Label::SetTextFont(const Graphics::Font& font) {
    if (font.GetSize() <= 0) return result::kInvalidArgument;
    font_ = font;
    RequestRedraw();
    return result::kSuccess;
}

void Label::SetTextColor(const Graphics::Color& color) {
    color_ = color;
    RequestRedraw();
}

result Label::OnDraw() {
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    if (!canvas) return result::kSuccess;
    result r = canvas->Clear();
    if (Succeeded(r) && bitmap_.GetWidth() > 0) r = canvas->DrawBitmap(Graphics::Point{}, bitmap_);
    if (Failed(r) || text_.IsEmpty()) return r;
    r = canvas->SetFont(font_);
    if (Failed(r)) return r;
    canvas->SetForegroundColor(color_);
    return canvas->DrawText({}, text_);
}

}  // namespace Osp::Ui::Controls
