// Halving a picture for one quadrant of a QUAD photograph.
#pragma once

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

/// Keeps the top left pixel of each 2 x 2 block. `destination` is width / 2 x height / 2; the last
/// row and column of an odd size have no place there.
void QShrink(ConstPixels source, Pixels destination);

}  // namespace Kivo::Effects
