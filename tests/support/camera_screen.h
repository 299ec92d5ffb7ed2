// Where the controls of the camera screen are, and the script lines of a finger on them.
#pragma once

#include <string>

namespace Kivo::Testing {

struct Spot {
    int x;
    int y;
};

constexpr Spot kShutterButton{736, 228};
constexpr Spot kHelpButton{40, 425};  // the question mark
constexpr Spot kHdrButton{264, 425};
constexpr Spot kWhiteBalanceButton{382, 425};
constexpr Spot kFlashButton{500, 425};
constexpr Spot kSwapButton{618, 425};  // the other camera
constexpr Spot kZoomBar{700, 10};      // also of the bar that is put away, like the next one
constexpr Spot kEffectRoll{20, 230};
constexpr Spot kCloseHelpButton{750, 50};  // while help is open
constexpr Spot kMessageButton{400, 320};   // of a message box, the only one
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
