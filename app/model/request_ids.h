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
/// The form has become the current one.
inline constexpr long kRequestBecameCurrent = 107;
/// Sign in, from the settings.
inline constexpr long kRequestFacebookSignIn = 109;
inline constexpr long kRequestTwitterSignIn = 112;
/// The share form is done: show the album or the settings again.
inline constexpr long kRequestReturnToAlbum = 127;
inline constexpr long kRequestReturnToSettings = 128;

}  // namespace Kivo
