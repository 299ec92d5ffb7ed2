// A colour with opacity.
#pragma once

#include <cstdint>

namespace Osp::Graphics {

/// Channels 0 to 255, not premultiplied; alpha 255 is opaque.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;

    friend bool operator==(const Color&, const Color&) = default;
};

}  // namespace Osp::Graphics
