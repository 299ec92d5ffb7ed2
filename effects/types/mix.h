// The double exposure of the MIX camera.
#pragma once

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

/// The mean of two frames of one size, rounded down.
void Mix(ConstPixels first, ConstPixels source, Pixels destination, Rows rows = {});

}  // namespace Kivo::Effects
