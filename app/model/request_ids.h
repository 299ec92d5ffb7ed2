// User events that forms send each other, in one numbering.
#pragma once

namespace Kivo {

/// Wake the camera.
inline constexpr long kRequestForeground = 100;
/// Let go of the camera.
inline constexpr long kRequestBackground = 101;
/// The album or the settings are coming back: show the album's splash.
inline constexpr long kRequestReturnFromAlbum = 104;
/// The chooser is coming back: show the splash of the camera type.
inline constexpr long kRequestReturnFromOptions = 105;

}  // namespace Kivo
