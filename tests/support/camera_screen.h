// Where the controls of the camera screen and its forms are, and the script lines of a finger on
// them.
#pragma once

#include <string>

namespace Kivo::Testing {

struct Spot {
    int x;
    int y;
};

constexpr Spot kShutterButton{736, 228};
constexpr Spot kCameraTypeButton{60, 50};
constexpr Spot kSettingsButton{95, 425};
constexpr Spot kHelpButton{40, 425};  // the question mark
constexpr Spot kHdrButton{264, 425};
constexpr Spot kWhiteBalanceButton{382, 425};
constexpr Spot kFlashButton{500, 425};
constexpr Spot kSwapButton{618, 425};  // the other camera
constexpr Spot kZoomBar{700, 10};      // also of the bar that is put away, like the next one
constexpr Spot kEffectRoll{20, 230};
constexpr Spot kCloseHelpButton{750, 50};         // while help is open
constexpr Spot kReturnButton = kCloseHelpButton;  // of a form
constexpr Spot kCameraBefore{122, 200};           // in the chooser, like the next one
constexpr Spot kCameraAfter{680, 200};
constexpr Spot kSoundToggle{624, 204};  // of the settings, like the next three
constexpr Spot kMemoryToggle{624, 269};
constexpr Spot kFacebookToggle{624, 334};
constexpr Spot kTwitterToggle{624, 399};
constexpr Spot kAlbumButton{736, 425};
constexpr Spot kPhoto{362, 250};  // of the album, like the rest
constexpr Spot kShareButton{750, 260};
constexpr Spot kWallButton{750, 345};
constexpr Spot kTrashButton{750, 430};
constexpr Spot kTwitterRow{362, 160};
constexpr Spot kFacebookRow{362, 232};
constexpr Spot kMailRow{362, 304};
constexpr Spot kCancelRow{362, 380};
constexpr Spot kDeleteButton{256, 300};
constexpr Spot kKeepButton{468, 300};
constexpr Spot kMessageButton{400, 320};  // of a message box, the only one
constexpr Spot kNoControl{400, 200};

inline std::string Line(const char* command, Spot spot) {
    return std::string(command) + " " + std::to_string(spot.x) + " " + std::to_string(spot.y);
}
inline std::string Tap(Spot spot) {
    return Line("tap", spot);
}
inline std::string Press(Spot spot) {
    return Line("press", spot);
}
inline std::string Release(Spot spot) {
    return Line("release", spot);
}

}  // namespace Kivo::Testing
