// PNG to pixels and back.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <osp/base/result.h>
#include <osp/graphics/dimension.h>

#include "osp/media/picture/encoded_picture.h"
#include "osp/media/picture/pixel_view.h"

/// Any thread, several at once.
namespace Osp::Media {

bool IsPng(std::span<const std::uint8_t> data);

/// Reads and checks the header. kOutOfRange for sizes that are not acceptable; kInvalidFormat for
/// damage and for a file that cannot be read; kOutOfMemory.
result ReadPngSize(const std::string& path, Graphics::Dimension& size);

/// Pixels of the whole picture, not premultiplied, into PackedSize(size, layout) bytes. The fourth
/// byte is the alpha, in kBgrx too; kRgb blends the stored values with black. kInvalidFormat, with
/// unspecified pixels, for what is not a whole PNG of `size`; kOutOfMemory.
result DecodePng(const std::string& path, const Graphics::Dimension& size, PixelLayout layout,
                 std::uint8_t* pixels);

/// The same with a file's bytes.
result ReadPngSize(std::span<const std::uint8_t> data, Graphics::Dimension& size);
result DecodePng(std::span<const std::uint8_t> data, const Graphics::Dimension& size,
                 PixelLayout layout, std::uint8_t* pixels);

/// The colour profile in a PNG; empty when there is none or a damaged one.
std::vector<std::uint8_t> ReadPngProfile(std::span<const std::uint8_t> data);

/// Three bytes a pixel in the file as in `picture`, which is kRgb, with a colour profile unless it
/// is empty or damaged. kInvalidArgument for sizes that are not acceptable.
result EncodePng(const PixelView& picture, std::span<const std::uint8_t> profile,
                 EncodedPicture& encoded);

}  // namespace Osp::Media
