// PNG to pixels and back.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include <osp/base/result.h>
#include <osp/graphics/dimension.h>

#include "media/encoded_picture.h"
#include "media/pixel_view.h"

/// Any thread, several at once.
namespace Osp::Media {

bool IsPng(std::span<const std::uint8_t> data);

/// Reads and checks the header. kInvalidFormat, also for a file that cannot be read and for sizes
/// that are not acceptable.
result ReadPngSize(const std::string& path, Graphics::Dimension& size);

/// Pixels of the whole picture, not premultiplied, into PackedSize(size, layout) bytes. The fourth
/// byte is the alpha, in kBgrx too; kRgb puts the picture on black. kInvalidFormat, with
/// unspecified pixels, for what is not a whole PNG of `size`.
result DecodePng(const std::string& path, const Graphics::Dimension& size, PixelLayout layout,
                 std::uint8_t* pixels);

/// The same with a file's bytes.
result ReadPngSize(std::span<const std::uint8_t> data, Graphics::Dimension& size);
result DecodePng(std::span<const std::uint8_t> data, const Graphics::Dimension& size,
                 PixelLayout layout, std::uint8_t* pixels);

/// Three bytes a pixel in the file as in `picture`, which is kRgb. kInvalidArgument for sizes that
/// are not acceptable.
result EncodePng(const PixelView& picture, EncodedPicture& encoded);

}  // namespace Osp::Media
