// White balance as gains of the three colours.
#pragma once

#include <cstdint>

#include <osp/media/camera_white_balance.h>

namespace Osp::Media {

/// In 256ths.
struct ColorGains {
    int red = 256;
    int green = 256;
    int blue = 256;

    constexpr bool IsNeutral() const { return red == 256 && green == 256 && blue == 256; }
};

/// What makes white things white under each light: blue is raised under the red light of a bulb.
constexpr ColorGains GainsOf(CameraWhiteBalance whiteBalance) {
    switch (whiteBalance) {
        case CameraWhiteBalance::kAuto:
            return {};
        case CameraWhiteBalance::kSunny:
            return {266, 256, 244};
        case CameraWhiteBalance::kCloudy:
            return {284, 258, 222};
        case CameraWhiteBalance::kFluorescent:
            return {258, 240, 282};
        case CameraWhiteBalance::kTungsten:
            return {212, 250, 324};
    }
    return {};
}

/// Applies the gains to `pixelCount` pixels of four bytes B, G, R, X. Source and target may be the
/// same; the fourth byte is kept.
void ApplyGains(const ColorGains& gains, const std::uint8_t* source, std::uint8_t* target,
                int pixelCount);

}  // namespace Osp::Media
