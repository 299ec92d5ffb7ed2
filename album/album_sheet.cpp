#include "album/album_sheet.h"

#include <memory>

#include <osp/ui/controls/button.h>

namespace Kivo {

using Osp::Base::String;
using Osp::Graphics::Bitmap;
using Osp::Graphics::Canvas;
using Osp::Graphics::Color;
using Osp::Graphics::Point;
using Osp::Graphics::Rectangle;
using Osp::Ui::Controls::Label;

namespace {

constexpr Rectangle kScreen{0, 0, 800, 480};
constexpr Color kScrim{0, 0, 0, 153};
constexpr Color kSheet{0xFA, 0xF5, 0xEA, 255};
constexpr Color kInk{0x1C, 0x1A, 0x17, 255};
constexpr Color kWhite{255, 255, 255, 255};
constexpr int kButtonRadius = 14;
constexpr int kButtonTextSize = 34;
constexpr int kRim = 2;
constexpr int kIconX = 6;
constexpr int kTextX = 84;

struct Paint {
    Color rim;
    Color ground;
    Color groundDown;
    Color text;
};
/// By kind of button.
constexpr Paint kPaints[] = {
    {{0x85, 0x7A, 0x69, 255}, kWhite, {0xCD, 0xBF, 0xA6, 255}, kInk},
    {{0xCF, 0x3A, 0x20, 255}, {0xCF, 0x3A, 0x20, 255}, {0x9E, 0x26, 0x12, 255}, kWhite},
    {{0x2E, 0x2A, 0x26, 255}, {0x2E, 0x2A, 0x26, 255}, {0x85, 0x7A, 0x69, 255}, kSheet},
};

class SheetButton : public Osp::Ui::Controls::Button {
  public:
    SheetButton(const Paint& paint, const Bitmap& icon) : paint_(paint), icon_(icon) {}

    result OnDraw() override {
        const std::unique_ptr<Canvas> canvas(GetCanvasN());
        const auto [width, height] = GetBounds().Size();
        result r = canvas->Clear();
        if (Osp::Failed(r)) return r;
        r = canvas->FillRoundRectangle(paint_.rim, {0, 0, width, height}, kButtonRadius);
        if (Osp::Failed(r)) return r;
        const Rectangle inside{kRim, kRim, width - 2 * kRim, height - 2 * kRim};
        r = canvas->FillRoundRectangle(IsPressed() ? paint_.groundDown : paint_.ground, inside,
                                       kButtonRadius - kRim);
        if (Osp::Failed(r)) return r;
        return icon_.GetWidth() > 0 ? DrawRow(*canvas) : DrawText(*canvas);
    }

  private:
    result DrawRow(Canvas& canvas) {
        Osp::Graphics::Font font;
        (void)font.Construct(Osp::Graphics::kFontStyleBold, kButtonTextSize);
        (void)canvas.SetFont(font);
        canvas.SetForegroundColor(paint_.text);
        const int y = (GetBounds().height - kButtonTextSize) / 2;
        const result r = canvas.DrawText({kTextX, y}, GetText());
        return Osp::Failed(r) ? r : canvas.DrawBitmap(Point{kIconX, 0}, icon_);
    }

    Paint paint_;
    Bitmap icon_;
};

}  // namespace

result AlbumSheet::Construct(const Rectangle& sheet, int radius) {
    sheet_ = sheet;
    radius_ = radius;
    AddTouchEventListener(*this);
    const result r = Panel::Construct(kScreen);
    return Osp::Failed(r) ? r : SetShowState(false);
}

Label* AlbumSheet::AddLine(const Rectangle& place, const String& text, int style, int size) {
    auto label = std::make_unique<Label>();
    Osp::Graphics::Font font;
    result r = label->Construct(place, text);
    if (Osp::Succeeded(r)) r = font.Construct(style, size);
    if (Osp::Succeeded(r)) r = label->SetTextFont(font);
    label->SetTextColor(kInk);
    if (Osp::Succeeded(r)) r = AddControl(label.get());
    return Osp::Failed(r) ? nullptr : label.release();
}

Label* AlbumSheet::AddCentredLine(const Rectangle& place, const String& text, int size) {
    Osp::Graphics::Font font;
    const std::unique_ptr<Canvas> canvas(GetCanvasN());
    if (Osp::Failed(font.Construct(Osp::Graphics::kFontStyleBold, size)) ||
        Osp::Failed(canvas->SetFont(font))) {
        return nullptr;
    }
    const int width = canvas->MeasureText(text).width;
    return AddLine({place.x + (place.width - width) / 2, place.y, width + 1, place.height}, text,
                   Osp::Graphics::kFontStyleBold, size);
}

result AddSheetButton(Osp::Ui::Container& sheet, SheetButtonKind kind, const Rectangle& place,
                      const String& text, const Bitmap& icon, int actionId,
                      Osp::Ui::IActionEventListener& listener) {
    const Paint& paint = kPaints[static_cast<std::size_t>(kind)];
    auto button = std::make_unique<SheetButton>(paint, icon);
    Osp::Graphics::Font font;
    result r = button->Construct(place);
    if (Osp::Succeeded(r)) r = font.Construct(Osp::Graphics::kFontStyleBold, kButtonTextSize);
    if (Osp::Succeeded(r)) r = button->SetTextFont(font);
    if (Osp::Failed(r)) return r;
    button->SetText(text);
    button->SetTextColor(paint.text);
    button->SetActionId(actionId);
    button->AddActionEventListener(listener);
    r = sheet.AddControl(button.get());
    if (Osp::Succeeded(r)) (void)button.release();
    return r;
}

result AlbumSheet::OnDraw() {
    const std::unique_ptr<Canvas> canvas(GetCanvasN());
    const result r = canvas->FillRectangle(kScrim, kScreen);
    return Osp::Failed(r) ? r : canvas->FillRoundRectangle(kSheet, sheet_, radius_);
}

}  // namespace Kivo
