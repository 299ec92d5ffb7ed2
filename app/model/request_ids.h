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
/// The album has been created: list the photographs.
inline constexpr long kRequestAlbumCreated = 106;
/// Never sent: the share form's own state while it waits for its placeholder.
inline constexpr long kRequestFacebookPlaceholder = 103;
/// The form has become the current one.
inline constexpr long kRequestBecameCurrent = 107;
/// Sign in, from the album, with the path of the photograph that is to be shared.
inline constexpr long kRequestFacebookSignInToShare = 108;
inline constexpr long kRequestTwitterSignInToShare = 111;
/// Sign in, from the settings.
inline constexpr long kRequestFacebookSignIn = 109;
inline constexpr long kRequestTwitterSignIn = 112;
/// To the album: signed in, the message can be written. To the share form: share with it, for
/// Twitter with the PIN at first.
inline constexpr long kRequestFacebookShare = 110;
inline constexpr long kRequestTwitterPin = 114;
inline constexpr long kRequestTwitterShare = 115;
/// The share form to itself: open the page on which Twitter asks.
inline constexpr long kRequestTwitterPage = 113;
/// Reserved for signing in to Flickr and sharing there, and what lies between; nobody sends them.
inline constexpr long kRequestFirstOfFlickr = 116;
inline constexpr long kRequestLastOfFlickr = 120;
/// To the album: the photograph has been shared, or has not.
inline constexpr long kRequestShared = 121;
inline constexpr long kRequestShareCancelled = 122;  ///< to the share form: cancel
inline constexpr long kRequestFacebookFailed = 123;
inline constexpr long kRequestTwitterFailed = 124;
inline constexpr long kRequestOtherShareFailed = 125;  ///< reserved for Flickr
/// The wall to itself: fetch the search results.
inline constexpr long kRequestFetchWall = 126;
/// The share form is done: show the album or the settings again.
inline constexpr long kRequestReturnToAlbum = 127;
inline constexpr long kRequestReturnToSettings = 128;

}  // namespace Kivo
