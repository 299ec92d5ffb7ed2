// What to ask for of a device that offers any size within a range.
#pragma once

#include <array>

#include <osp/graphics/dimension.h>

namespace Osp::Media {

/// The sizes that cameras usually have.
inline constexpr std::array kUsualSizes = {
    Graphics::Dimension{640, 480},  Graphics::Dimension{800, 480},  Graphics::Dimension{1280, 720},
    Graphics::Dimension{1280, 960}, Graphics::Dimension{1600, 960}, Graphics::Dimension{1920, 1080},
};

/// No camera's pictures are longer: a larger number is a device's way to say "any".
inline constexpr int kMostVideoSide = 16384;

}  // namespace Osp::Media
