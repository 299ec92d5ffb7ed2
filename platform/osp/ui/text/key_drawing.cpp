// How keys look: letters on a lighter ground than the others, Enter amber; pressed in cream, as
// every control of the look; Shift amber while it is on, and "Caps" when it stays on, because
// colour alone tells nobody.
#include <algorithm>
#include <cassert>
#include <cmath>
#include <glib.h>
#include <utility>

#include "osp/graphics/surface.h"
#include "osp/ui/access.h"
#include "osp/ui/text/keyboard.h"

namespace Osp::Ui {

namespace {

using Graphics::Color;

constexpr Color kCream{0xFA, 0xF5, 0xEA, 255};
constexpr Color kInk{0x1C, 0x1A, 0x17, 255};
constexpr Color kLetterKey{0x4A, 0x45, 0x3F, 255};
constexpr Color kOtherKey{0x2E, 0x2A, 0x26, 255};
constexpr Color kAmber{0xFF, 0xB9, 0x38, 255};
constexpr Color kAmberPressed{0xE3, 0x9A, 0x12, 255};
constexpr Color kRim{0x85, 0x7A, 0x69, 255};

constexpr int kKeyRadius = 8;
constexpr int kCharacterSize = 29;  // the line of an em of 24
constexpr int kWordSize = 24;       // of 20
constexpr double kGlyphScale = 2.0 / 3;
constexpr double kGlyphSide = 48;

constexpr int kAlternativeWidth = 64;
constexpr int kAlternativeHeight = 56;
constexpr int kAlternativeGap = 4;
constexpr int kAlternativeSize = 34;
constexpr int kForgiven = 30;  // pixels below the key until nothing is chosen

bool IsLetterKey(const KeyPlace& place) {
    const bool isByTheSpace = place.text == u"," || place.text == u".";
    return place.kind == KeyKind::kSpace || (place.kind == KeyKind::kText && !isByTheSpace);
}

const char* WordOf(KeyKind kind, KeyPage page, ShiftState shift) {
    switch (kind) {
        case KeyKind::kShift:
            return shift == ShiftState::kLocked ? "Caps" : "Shift";
        case KeyKind::kSymbols:
            return "?123";
        case KeyKind::kPage:
            return page == KeyPage::kDigits ? "#+=" : "?123";
        case KeyKind::kLetters:
            return "abc";
        case KeyKind::kSpace:
            return "space";
        case KeyKind::kEnter:
            return "Enter";
        default:
            return "";
    }
}

const char* NameOf(KeyKind kind) {
    return kind == KeyKind::kDelete ? "Delete" : kind == KeyKind::kHide ? "Hide keyboard" : "";
}

Graphics::Font MakeFont(int style, int size) {
    Graphics::Font font;
    (void)font.Construct(style, size);
    return font;
}

void DrawCentred(Graphics::Canvas& canvas, const Graphics::Rectangle& area,
                 const Base::String& text) {
    const Graphics::Dimension size = canvas.MeasureText(text);
    (void)canvas.DrawText(
        {area.x + (area.width - size.width) / 2, area.y + (area.height - size.height) / 2}, text);
}

void DeletePath(cairo_t* context) {
    constexpr std::pair<double, double> kOutline[] = {
        {17, 10}, {42, 10}, {42, 38}, {17, 38}, {4, 24}};
    for (const auto& [x, y] : kOutline) cairo_line_to(context, x, y);
    cairo_close_path(context);
    cairo_move_to(context, 22, 18.5);
    cairo_line_to(context, 34, 29.5);
    cairo_move_to(context, 34, 18.5);
    cairo_line_to(context, 22, 29.5);
}

void HidePath(cairo_t* context) {
    cairo_move_to(context, 9, 16);
    cairo_line_to(context, 24, 31);
    cairo_line_to(context, 39, 16);
}

/// A glyph of the look, in a box of 48 pixels.
void DrawGlyph(cairo_t* context, const Graphics::Rectangle& area, void (*path)(cairo_t*),
               const Color& color) {
    const double side = kGlyphSide * kGlyphScale;
    cairo_translate(context, area.x + (area.width - side) / 2, area.y + (area.height - side) / 2);
    cairo_scale(context, kGlyphScale, kGlyphScale);
    path(context);
    cairo_set_source_rgb(context, color.red / 255.0, color.green / 255.0, color.blue / 255.0);
    cairo_set_line_width(context, 4.5);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    cairo_stroke(context);
}

}  // namespace

Key::Key(KeyPlace place, KeyPage page) : place_(std::move(place)), page_(page) {
    (void)Construct(place_.cell);
    SetName(NameOf(place_.kind));
    SetShift(ShiftState::kOff);
}

void Key::SetShift(ShiftState shift) {
    shift_ = shift;
    SetText(place_.kind == KeyKind::kText ? Base::String(Typed())
                                          : WordOf(place_.kind, page_, shift));
}

std::u16string Key::Typed() const {
    if (shift_ == ShiftState::kOff) return place_.text;
    return {static_cast<char16_t>(g_unichar_toupper(place_.text.front()))};
}

result Key::OnDraw() {
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    result r = canvas->Clear();
    const KeyKind kind = place_.kind;
    const bool isAmber =
        kind == KeyKind::kEnter || (kind == KeyKind::kShift && shift_ != ShiftState::kOff);
    const Color ground = isAmber               ? (IsPressed() ? kAmberPressed : kAmber)
                         : IsPressed()         ? kCream
                         : IsLetterKey(place_) ? kLetterKey
                                               : kOtherKey;
    const Color colour = isAmber || IsPressed() ? kInk : kCream;
    if (Succeeded(r)) r = canvas->FillRoundRectangle(ground, place_.keycap, kKeyRadius);
    if (Failed(r)) return r;
    if (kind == KeyKind::kDelete || kind == KeyKind::kHide) {
        const Graphics::CairoPointer context(cairo_create(Access::Picture(*this)->Cairo()));
        DrawGlyph(context.get(), place_.keycap, kind == KeyKind::kHide ? HidePath : DeletePath,
                  colour);
        return r;
    }
    const int size = kind == KeyKind::kText ? kCharacterSize : kWordSize;
    r = canvas->SetFont(MakeFont(Graphics::kFontStyleBold, size));
    canvas->SetForegroundColor(colour);
    DrawCentred(*canvas, place_.keycap, GetText());
    return r;
}

Alternatives::Alternatives(std::u16string characters, const Graphics::Rectangle& key)
    : characters_(std::move(characters)), key_(key) {
    assert(!characters_.empty());
    const int width = kAlternativeWidth * static_cast<int>(characters_.size());
    const int middle = key.x + key.width / 2;
    // From the right half of the keyboard the row goes to the left.
    const bool isMirrored = middle > kKeyboardSize.width / 2;
    if (isMirrored) std::ranges::reverse(characters_);
    const int x =
        isMirrored ? middle + kAlternativeWidth / 2 - width : middle - kAlternativeWidth / 2;
    SetBounds({std::clamp(x, 0, kKeyboardSize.width - width),
               key.y - kAlternativeHeight - kAlternativeGap, width, kAlternativeHeight});
    SetName("Alternatives");
    Follow({middle, key.y});
}

void Alternatives::Follow(Graphics::Point position) {
    const int count = static_cast<int>(characters_.size());
    const int place = (position.x - GetBounds().x) / kAlternativeWidth;
    const bool isFar = position.y > key_.y + key_.height + kForgiven;
    const int chosen = isFar ? -1 : std::clamp(place, 0, count - 1);
    if (chosen == chosen_) return;
    chosen_ = chosen;
    RequestRedraw();
}

std::u16string Alternatives::Chosen() const {
    return chosen_ < 0 ? std::u16string()
                       : characters_.substr(static_cast<std::size_t>(chosen_), 1);
}

result Alternatives::OnDraw() {
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    const auto [width, height] = GetBounds().Size();
    result r = canvas->Clear();
    if (Succeeded(r)) r = canvas->FillRoundRectangle(kRim, {0, 0, width, height}, 12);
    if (Succeeded(r)) {
        r = canvas->FillRoundRectangle(kOtherKey, {2, 2, width - 4, height - 4}, 10);
    }
    if (Succeeded(r)) r = canvas->SetFont(MakeFont(Graphics::kFontStyleBold, kAlternativeSize));
    if (Failed(r)) return r;
    for (int i = 0; i < static_cast<int>(characters_.size()); ++i) {
        const Graphics::Rectangle cell{i * kAlternativeWidth + 5, 5, kAlternativeWidth - 10,
                                       height - 10};
        if (i == chosen_) (void)canvas->FillRoundRectangle(kAmber, cell, kKeyRadius);
        canvas->SetForegroundColor(i == chosen_ ? kInk : kCream);
        DrawCentred(*canvas, cell,
                    Base::String(characters_.substr(static_cast<std::size_t>(i), 1)));
    }
    return r;
}

}  // namespace Osp::Ui
