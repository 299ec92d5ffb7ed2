// Pictures that a camera stored turned or mirrored, with a note about it.
#pragma once

#include <cstdint>

#include "osp/media/picture/pixel_view.h"

/// Any thread.
namespace Osp::Media {

/// Orientations as EXIF numbers them: 1 is upright, 2 to 8 are turned or mirrored; other values
/// count as 1.
constexpr bool IsUpright(int orientation) {
    return orientation < 2 || orientation > 8;
}
/// Whether width and height change places.
constexpr bool IsTransposed(int orientation) {
    return orientation >= 5 && orientation <= 8;
}

/// Writes the picture, packed and in the same layout, with the sides that the orientation gives it.
/// The two do not overlap.
void TurnUpright(const PixelView& stored, int orientation, std::uint8_t* upright);

}  // namespace Osp::Media
