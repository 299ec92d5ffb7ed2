// What a drag on the zoom bar or the effect roll chooses.
#pragma once

#include "app/model/camera_types.h"

namespace Kivo {

/// A drag changes the value by one for every this many pixels.
inline constexpr int kPixelsPerDragStep = 30;

/// The zoom level 0 to 6 after a drag by `dx` pixels (negative: to the left, which zooms in).
int ZoomAfterDrag(int level, int dx);

/// The effect after a drag by `dy` pixels (negative: upward, to the next effects), skipping what
/// the camera type does not offer. Wraps once only: a long drag can leave the range 0 to 9, and
/// every lookup takes such a value for Normal.
int EffectAfterDrag(CameraType type, int effect, int dy);

}  // namespace Kivo
