// The TILT camera: a sharp band across the middle, like a picture of a model.
#pragma once

#include "effects/blur/gaussian_levels.h"
#include "effects/pixels/pixels.h"
#include "effects/pixels/scratch.h"

namespace Kivo::Effects {

/// Raises contrast and colour, and blurs more and more towards the top and the bottom. Reads nine
/// rows beyond `rows` on either side.
void TiltShift(ConstPixels source, Pixels destination, const GaussianLevels& levels,
               Scratch& scratch, Rows rows = {});

}  // namespace Kivo::Effects
