// JPEG to pixels and back.
#pragma once

#include <cstdint>
#include <span>

#include <osp/base/result.h>
#include <osp/graphics/dimension.h>

#include "base/block_pool.h"
#include "media/pixel_view.h"

/// Any thread, several at once.
namespace Osp::Media {

constexpr int kJpegQuality = 95;

bool IsJpeg(std::span<const std::uint8_t> data);

/// From the header alone. kInvalidFormat, also for sizes that are not acceptable.
result ReadJpegSize(std::span<const std::uint8_t> data, Graphics::Dimension& size);

/// Packed pixels of the whole picture, alpha 255. `pixels` is kept when it has exactly the size
/// needed and replaced otherwise. kInvalidFormat, with unspecified pixels, for anything that is not
/// a whole and undamaged JPEG.
result DecodeJpeg(std::span<const std::uint8_t> data, PixelLayout layout, Base::Block& pixels,
                  Graphics::Dimension& size);

/// Recycled memory for an encoded picture.
struct EncodedPicture {
    Base::Block block;          // may be larger than the picture
    std::size_t sizeBytes = 0;  // of the picture

    std::span<const std::uint8_t> Bytes() const { return {block.data(), sizeBytes}; }
};

/// Quality 95, 4:2:0, slow integer DCT. `metadata` is a whole APP1 segment, or empty, and goes
/// before everything else. `encoded` is reused when its block is large enough. kInvalidArgument for
/// sizes that are not acceptable.
result EncodeJpeg(const PixelView& picture, std::span<const std::uint8_t> metadata,
                  EncodedPicture& encoded);

}  // namespace Osp::Media
