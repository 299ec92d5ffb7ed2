// Portable pixmaps: the binary form.
#pragma once

#include <cstdint>
#include <span>

#include <osp/base/result.h>
#include <osp/graphics/dimension.h>

#include "osp/media/picture/encoded_picture.h"
#include "osp/media/picture/pixel_view.h"

/// Any thread, several at once.
namespace Kivo::Tools {

bool IsPpm(std::span<const std::uint8_t> data);

/// From the header alone. kInvalidFormat, and kOutOfRange for sizes that are not acceptable.
result ReadPpmSize(std::span<const std::uint8_t> data, Osp::Graphics::Dimension& size);

/// Three bytes a pixel, into room for `size`, with channels of any range brought to 0 to 255.
/// kInvalidFormat for what is not a whole pixmap of that size; what follows the pixels is not
/// looked at.
result DecodePpm(std::span<const std::uint8_t> data, const Osp::Graphics::Dimension& size,
                 std::uint8_t* pixels);

/// `picture` is kRgb.
void EncodePpm(const Osp::Media::PixelView& picture, Osp::Media::EncodedPicture& encoded);

}  // namespace Kivo::Tools
