// A tint of one hue at the luminance of the picture.
#pragma once

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

/// Blends every pixel with the colour of the given hue and saturation (both on a scale of 0 to 255)
/// at the pixel's own luminance. `opacity` is the share of that colour, clamped to 0 to 1.
void Colorize(ConstPixels source, Pixels destination, int hue, int saturation, float opacity,
              Rows rows = {});

}  // namespace Kivo::Effects
