// How a camera compensates the colour of the light.
#pragma once

#include <cstdint>

namespace Osp::Media {

enum class CameraWhiteBalance : std::uint8_t {
    kAuto = 0,
    kSunny = 1,
    kCloudy = 2,
    kFluorescent = 3,
    kTungsten = 4,
};

}  // namespace Osp::Media
