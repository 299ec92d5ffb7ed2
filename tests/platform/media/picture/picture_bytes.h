// What the tests of the codecs have in common.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "osp/media/picture/pixel_view.h"
#include "tests/support/pictures/pictures.h"

namespace Osp::Media {

using Bytes = std::vector<std::uint8_t>;

inline constexpr PixelLayout kLayouts[] = {PixelLayout::kRgb, PixelLayout::kRgba,
                                           PixelLayout::kBgrx};

/// The picture's pixels in another layout; the fourth byte is `fourth`.
inline Bytes InLayout(const Picture& picture, PixelLayout layout, std::uint8_t fourth) {
    if (layout == PixelLayout::kRgb) return picture.bytes;
    Bytes bytes;
    for (std::size_t i = 0; i < picture.bytes.size(); i += 3) {
        const std::uint8_t* const p = &picture.bytes[i];
        const bool isRgba = layout == PixelLayout::kRgba;
        bytes.insert(bytes.end(), {p[isRgba ? 0 : 2], p[1], p[isRgba ? 2 : 0], fourth});
    }
    return bytes;
}

inline Graphics::Dimension SizeOf(const Picture& picture) {
    return {picture.width, picture.height};
}

inline std::span<const std::uint8_t> AsBytes(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace Osp::Media
