// One half of the picture reflected onto the other.
#pragma once

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

/// Reflects the top half onto the bottom half, or, with `vertical` false, the left half onto the
/// right half. The middle row or column of an odd size is not written.
void Mirror(ConstPixels source, Pixels destination, bool vertical);

}  // namespace Kivo::Effects
