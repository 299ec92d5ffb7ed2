// Negative.
#pragma once

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

/// Every byte becomes 255 minus itself.
void Negative(ConstPixels source, Pixels destination, Rows rows = {});

}  // namespace Kivo::Effects
