// The DSLR camera: a sharp centre in a blurred surrounding.
#pragma once

#include "effects/blur/gaussian_levels.h"
#include "effects/pixels/pixels.h"
#include "effects/pixels/scratch.h"

namespace Kivo::Effects {

/// Blurs more and more towards all four edges. Reads nine rows beyond `rows` on either side.
void OutFocus(ConstPixels source, Pixels destination, const GaussianLevels& levels,
              Scratch& scratch, Rows rows = {});

}  // namespace Kivo::Effects
