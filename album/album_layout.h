// Where things are in the album.
#pragma once

#include <algorithm>

#include <osp/graphics/dimension.h>
#include <osp/graphics/point.h>
#include <osp/graphics/rectangle.h>

namespace Kivo::AlbumLayout {

using Osp::Graphics::Dimension;
using Osp::Graphics::Rectangle;

/// The room for a photograph, which lies in the middle of it.
inline constexpr Rectangle kPhotoRoom{49, 65, 626, 376};
/// Where a finger taps and swipes; both borders of the print with it.
inline constexpr Rectangle kTouchArea{28, 51, 669, 414};
inline constexpr int kPortraitWidth = 282;
inline constexpr int kFourToThreeWidth = 501;

/// A tap moves no further, and a swipe at least so far; what lies between is neither.
inline constexpr int kMostTapPixels = 9;
inline constexpr int kLeastSwipePixels = 11;

/// The size within which a photograph of that size is decoded and shown.
constexpr Dimension BoundsFor(const Dimension& photo) {
    if (photo.height >= photo.width) return {kPortraitWidth, kPhotoRoom.height};
    // 4:3 leaves a border of desk: stretched over the whole room, faces would be too wide.
    if (photo.width / 4 == photo.height / 3) return {kFourToThreeWidth, kPhotoRoom.height};
    return kPhotoRoom.Size();
}

constexpr bool IsPortrait(const Dimension& photo) {
    return BoundsFor(photo).width == kPortraitWidth;
}

/// `size`, which is positive, made as large as `bounds` allow, with its own proportions.
constexpr Dimension Fitted(const Dimension& size, const Dimension& bounds) {
    const auto scaled = [](int side, int numerator, int denominator) {
        return std::max(1, (side * numerator + denominator / 2) / denominator);
    };
    return size.width * bounds.height >= bounds.width * size.height
               ? Dimension{bounds.width, scaled(size.height, bounds.width, size.width)}
               : Dimension{scaled(size.width, bounds.height, size.height), bounds.height};
}

/// In the middle of `room`.
constexpr Rectangle Centred(const Dimension& size, const Rectangle& room) {
    return {room.x + room.width / 2 - size.width / 2, room.y + (room.height - size.height) / 2,
            size.width, size.height};
}

/// The part of the print that a photograph, shown in that size, leaves to be seen. It is always as
/// high as the room; beside a portrait that is narrower than most there is ground to be seen.
constexpr Rectangle WindowFor(const Dimension& shown, bool isPortrait) {
    return Centred({isPortrait ? kPortraitWidth : shown.width, kPhotoRoom.height}, kPhotoRoom);
}

/// How far a photograph has slid after so many steps, to the right where positive.
constexpr int SlideOffset(int step, bool isForward) {
    constexpr int kStepPixels = 80;
    return isForward ? -kStepPixels * step : kStepPixels * step;
}

/// Whether it has left the screen, to either side.
constexpr bool HasSlidAway(int offset, bool isPortrait) {
    const int distance = offset < 0 ? -offset : offset;
    return isPortrait ? 507 + distance > 1082 : 676 + distance > 1426;
}

}  // namespace Kivo::AlbumLayout
