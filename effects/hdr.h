// Local tone compression.
#pragma once

#include "gaussian_levels.h"
#include "pixels.h"
#include "scratch.h"

namespace Kivo::Effects {

/// Lifts the surroundings of dark areas and lowers those of bright ones by at most a fifth of the
/// difference, then raises the contrast by a tenth. Reads nine rows beyond `rows` on either side.
void HDR(ConstPixels source, Pixels destination, const GaussianLevels& levels, Scratch& scratch,
         Rows rows = {});

}  // namespace Kivo::Effects
