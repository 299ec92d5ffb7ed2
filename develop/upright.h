// Pictures that a camera stored turned or mirrored, with a note about it.
#pragma once

#include "effects/pixels/pixels.h"

namespace Kivo::Tools {

/// Orientations as EXIF numbers them: 1 is upright, 2 to 8 are turned or mirrored; other values
/// count as 1.
constexpr bool IsUpright(int orientation) {
    return orientation < 2 || orientation > 8;
}
/// Whether width and height change places.
constexpr bool IsTransposed(int orientation) {
    return orientation >= 5 && orientation <= 8;
}

/// `upright` has the size that the orientation gives the picture.
void TurnUpright(Effects::ConstPixels picture, int orientation, Effects::Pixels upright);

}  // namespace Kivo::Tools
