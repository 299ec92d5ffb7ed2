// Where the sliding controls of the camera screen rest.
#pragma once

namespace Kivo {

inline constexpr int kZoomBarX = 505;
inline constexpr int kZoomBarRetractedY = -56;
inline constexpr int kZoomBarExtendedY = 0;
inline constexpr int kEffectRollY = 108;
inline constexpr int kEffectRollRetractedX = -184;
inline constexpr int kEffectRollExtendedX = -132;

}  // namespace Kivo
