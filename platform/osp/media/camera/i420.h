// Preview frames from drawn pictures.
#pragma once

#include <cstddef>
#include <cstdint>

#include <osp/graphics/dimension.h>

#include "osp/media/camera/white_balance.h"
#include "osp/media/picture/pixel_view.h"

namespace Osp::Media {

constexpr std::size_t I420Bytes(const Graphics::Dimension& size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 3 / 2;
}

/// Converts a kBgrx picture with even sides to I420Bytes(size) bytes: planes Y, Cb, Cr without
/// gaps, video range, chroma from the mean of 2 x 2 pixels. The same on every processor. Any
/// thread.
void ConvertToI420(const PixelView& picture, const ColorGains& gains, std::uint8_t* frame);

}  // namespace Osp::Media
