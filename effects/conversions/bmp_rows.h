// From the rows of a BMP file to a picture.
#pragma once

#include <cstdint>

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

/// `rows` are the picture's, bottom row first, each pixel blue, green, red, without gaps: a BMP has
/// none where four divides the width. The two do not overlap.
void FromBmpRows(const std::uint8_t* rows, Pixels picture);

}  // namespace Kivo::Effects
