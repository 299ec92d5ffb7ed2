// From a picture to the pixels of a bitmap.
#pragma once

#include <cstdint>

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

/// Four bytes a pixel (the three of the picture, then 255), `rgba` having room for all of them and
/// not overlapping the picture. With `turned` the result is height x width, a quarter turn
/// clockwise. One pass.
void ConvertToRgba(ConstPixels picture, bool turned, std::uint8_t* rgba, Rows rows = {});

}  // namespace Kivo::Effects
