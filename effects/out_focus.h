// The DSLR camera: a sharp centre in a blurred surrounding.
#pragma once

#include "gaussian_levels.h"
#include "pixels.h"
#include "scratch.h"

namespace Kivo::Effects {

/// Blurs more and more towards all four edges. Reads nine rows beyond `rows` on either side.
void OutFocus(ConstPixels source, Pixels destination, const GaussianLevels& levels,
              Scratch& scratch, Rows rows = {});

}  // namespace Kivo::Effects
