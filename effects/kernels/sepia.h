// The brown of old prints.
#pragma once

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

/// Luminance, shifted by +49, -14 and -56 in red, green and blue.
void Sepia(ConstPixels source, Pixels destination, Rows rows = {});

}  // namespace Kivo::Effects
