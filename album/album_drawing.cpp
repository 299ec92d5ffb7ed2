// A print has the width of its photograph: its frame is the two ends of a wide one. Only portraits,
// which are all of one width but for very slim ones, have a frame of their own.
#include <memory>

#include "album/album_form.h"
#include "album/album_layout.h"
#include "album/album_sheet.h"

namespace Kivo {

using Osp::Base::String;
using Osp::Graphics::Canvas;
using Osp::Graphics::Color;
using Osp::Graphics::Point;
using Osp::Graphics::Rectangle;

namespace {

constexpr Color kCream{0xFA, 0xF5, 0xEA, 255};
constexpr Color kMat{0x2E, 0x2A, 0x26, 255};  // beside a photograph of unusual proportions
constexpr Color kStrip{0x1C, 0x1A, 0x17, 209};
constexpr Point kCounterPlace{50, 13};
constexpr Point kHdrPlace{634, 3};
constexpr Point kSharedPlace{586, 3};
constexpr Point kEmptyPlace{46, 62};
constexpr int kFrameLeft = 33;  // of the window in a frame, shadow included
constexpr int kFrameTop = 26;
constexpr int kStripPadding = 21;
constexpr int kTitleTop = 12;
constexpr int kFirstLineTop = 56;
constexpr int kSecondLineTop = 92;

/// Cut short with dots where it is too long.
String Shortened(Canvas& canvas, const String& text, int width) {
    if (canvas.MeasureText(text).width <= width) return text;
    int least = 0;
    int most = text.GetLength();
    String fitting;
    while (least < most) {
        const int length = (least + most + 1) / 2;
        String candidate;
        (void)text.SubString(0, length, candidate);
        candidate.Append("\u2026");
        const bool fits = canvas.MeasureText(candidate).width <= width;
        if (fits) fitting = candidate;
        (fits ? least : most) = fits ? length : length - 1;
    }
    return fitting;
}

result DrawCentred(Canvas& canvas, const Osp::Graphics::Font& font, const String& text, int middle,
                   int y) {
    const result r = canvas.SetFont(font);
    if (Osp::Failed(r)) return r;
    canvas.SetForegroundColor(kCream);
    return canvas.DrawText({middle - canvas.MeasureText(text).width / 2, y}, text);
}

}  // namespace

result AlbumForm::OnDraw() {
    const std::unique_ptr<Canvas> canvas(GetCanvasN());
    if (!canvas) return result::kSuccess;
    result r = canvas->DrawBitmap(Point{}, pictures_.ground);
    // Until the list is there, nothing is known of it.
    if (Osp::Failed(r) || !isListed_) return r;
    if (IsEmpty()) return DrawEmpty(*canvas);
    r = DrawPrint(*canvas);
    if (Osp::Succeeded(r)) r = DrawCounter(*canvas);
    return Osp::Failed(r) || isSliding_ ? r : DrawBadges(*canvas);
}

result AlbumForm::DrawPrint(Canvas& canvas) {
    const int offset = isSliding_ ? AlbumLayout::SlideOffset(step_, isForward_) : 0;
    if (bitmap_.GetWidth() == 0) return DrawBroken(canvas, offset);
    const bool isPortrait = AlbumLayout::IsPortrait(photo_.size);
    const auto shown = AlbumLayout::Fitted({bitmap_.GetWidth(), bitmap_.GetHeight()},
                                           AlbumLayout::BoundsFor(photo_.size));
    const Rectangle window = AlbumLayout::WindowFor(shown, isPortrait).MovedBy(offset, 0);
    result r = DrawFrame(canvas, window);
    if (Osp::Failed(r)) return r;
    const Rectangle place = AlbumLayout::Centred(shown, window);
    if (place != window) r = canvas.FillRectangle(kMat, window);
    if (Osp::Succeeded(r)) r = canvas.DrawBitmap(place, bitmap_);
    return Osp::Failed(r) || information_.title.IsEmpty() ? r : DrawInformation(canvas, window);
}

result AlbumForm::DrawFrame(Canvas& canvas, const Rectangle& window) {
    const Point corner{window.x - kFrameLeft, window.y - kFrameTop};
    if (window.width == AlbumLayout::kPortraitWidth) {
        return canvas.DrawBitmap(corner, pictures_.portraitFrame);
    }
    const Osp::Graphics::Bitmap& wide = pictures_.wideFrame;
    const int width = window.width + 2 * kFrameLeft;
    const int left = width / 2;
    const int right = width - left;
    const result r = canvas.DrawBitmap(corner, wide, {0, 0, left, wide.GetHeight()});
    if (Osp::Failed(r)) return r;
    return canvas.DrawBitmap({corner.x + left, corner.y}, wide,
                             {wide.GetWidth() - right, 0, right, wide.GetHeight()});
}

result AlbumForm::DrawBroken(Canvas& canvas, int offset) {
    const Rectangle window = AlbumLayout::kPhotoRoom.MovedBy(offset, 0);
    const int middle = window.x + window.width / 2;
    result r = DrawFrame(canvas, window);
    if (Osp::Succeeded(r)) r = canvas.DrawBitmap(Point{window.x, window.y}, pictures_.broken);
    if (Osp::Succeeded(r)) r = DrawCentred(canvas, brokenFont_, "BROKEN", middle, 200);
    if (Osp::Failed(r)) return r;
    return DrawCentred(canvas, lineFont_, "This file holds no picture.", middle, 282);
}

result AlbumForm::DrawEmpty(Canvas& canvas) {
    const auto& room = AlbumLayout::kPhotoRoom;
    const int middle = room.x + room.width / 2;
    result r = canvas.DrawBitmap(kEmptyPlace, pictures_.empty);
    if (Osp::Succeeded(r)) r = DrawCentred(canvas, emptyFont_, "No photos yet", middle, 325);
    if (Osp::Failed(r)) return r;
    return DrawCentred(canvas, lineFont_, "The red button takes you back to the camera.", middle,
                       382);
}

result AlbumForm::DrawCounter(Canvas& canvas) {
    const result r = canvas.SetFont(counterFont_);
    if (Osp::Failed(r)) return r;
    canvas.SetForegroundColor(kCream);
    String text;
    text.Append(index_ + 1).Append(" / ").Append(static_cast<int>(names_.size()));
    return canvas.DrawText(kCounterPlace, text);
}

result AlbumForm::DrawBadges(Canvas& canvas) {
    result r = result::kSuccess;
    if (photo_.isHdr && !photo_.isBroken) r = canvas.DrawBitmap(kHdrPlace, pictures_.hdrBadge);
    const bool isShared = shared_.contains(names_[static_cast<std::size_t>(index_)]);
    return Osp::Failed(r) || !isShared ? r : canvas.DrawBitmap(kSharedPlace, pictures_.sharedBadge);
}

// Dark enough for any photograph beneath. A narrow one has the date on a line of its own.
result AlbumForm::DrawInformation(Canvas& canvas, const Rectangle& window) {
    const bool isNarrow = window.width < AlbumLayout::kFourToThreeWidth;
    const int height = isNarrow ? 140 : 100;
    const Rectangle strip{window.x, window.y + window.height - height, window.width, height};
    result r = canvas.FillRoundRectangle(kStrip, strip, 0);
    if (Osp::Succeeded(r)) r = canvas.SetFont(titleFont_);
    if (Osp::Failed(r)) return r;
    canvas.SetForegroundColor(kCream);
    const int left = strip.x + kStripPadding;
    const int width = strip.width - 2 * kStripPadding;
    r = canvas.DrawText({left, strip.y + kTitleTop}, Shortened(canvas, information_.title, width));
    if (Osp::Succeeded(r)) r = canvas.SetFont(lineFont_);
    if (Osp::Failed(r)) return r;
    const String& date = information_.date;
    const int dateWidth = canvas.MeasureText(date).width;
    r = canvas.DrawText({isNarrow ? left : left + width - dateWidth,
                         strip.y + (isNarrow ? kSecondLineTop : kFirstLineTop)},
                        date);
    if (Osp::Failed(r)) return r;
    const int room = isNarrow ? width : width - dateWidth - kStripPadding;
    return canvas.DrawText({left, strip.y + kFirstLineTop},
                           Shortened(canvas, information_.size, room));
}

void AlbumForm::Refresh() {
    const auto [back, share, wall, trash] = column_;
    (void)share->SetEnabled(!IsEmpty() && !photo_.isBroken);
    (void)trash->SetEnabled(!IsEmpty());
    String name;
    if (IsEmpty()) {
        name = "No photos yet";
    } else {
        name.Append(String(names_[static_cast<std::size_t>(index_)])).Append(", ");
        name.Append(index_ + 1).Append(" / ").Append(static_cast<int>(names_.size()));
        if (photo_.isBroken) name.Append(", BROKEN");
        if (photo_.isHdr) name.Append(", HDR");
        for (const String* text : {&information_.title, &information_.size, &information_.date}) {
            if (!text->IsEmpty()) name.Append(", ").Append(*text);
        }
    }
    SetName(name);
    RequestRedraw();
}

}  // namespace Kivo
