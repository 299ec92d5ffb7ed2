// Local tone compression.
#pragma once

#include "effects/blur/gaussian_levels.h"
#include "effects/pixels/pixels.h"
#include "effects/pixels/scratch.h"

namespace Kivo::Effects {

/// Lifts the surroundings of dark areas and lowers those of bright ones by at most a fifth of the
/// difference, then raises the contrast by a tenth. Reads nine rows beyond `rows` on either side.
void HDR(ConstPixels source, Pixels destination, const GaussianLevels& levels, Scratch& scratch,
         Rows rows = {});

}  // namespace Kivo::Effects
