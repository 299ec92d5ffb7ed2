// Dark contours on white.
#pragma once

#include "effects/pixels/pixels.h"
#include "effects/pixels/scratch.h"

namespace Kivo::Effects {

/// Every byte becomes 255 minus the range of its channel over the 3 x 3 neighbourhood that lies
/// inside the picture. Reads one row beyond `rows` on either side.
void Edge(ConstPixels source, Pixels destination, Scratch& scratch, Rows rows = {});

}  // namespace Kivo::Effects
