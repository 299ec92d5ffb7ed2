// Black and white.
#pragma once

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

/// Grey by luminance. Each term is truncated before the sum, so white comes out as 254.
void BW(ConstPixels source, Pixels destination, Rows rows = {});

}  // namespace Kivo::Effects
