// Whole pictures from JPEG to pixels and back.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <osp/base/result.h>
#include <osp/graphics/dimension.h>

#include "osp/base/values/block_pool.h"
#include "osp/media/picture/encoded_picture.h"
#include "osp/media/picture/pixel_view.h"

/// Any thread, several at once.
namespace Osp::Media {

bool IsJpeg(std::span<const std::uint8_t> data);

/// From the header alone; failures as JpegReader has them.
result ReadJpegSize(std::span<const std::uint8_t> data, Graphics::Dimension& size);

/// Packed pixels of the whole picture, alpha 255. `pixels` is kept when it has exactly the size
/// needed and replaced otherwise. A failure of JpegReader's, with unspecified pixels, for anything
/// that does not hold every row; what is odd beside them is not minded.
result DecodeJpeg(std::span<const std::uint8_t> data, PixelLayout layout, Base::Block& pixels,
                  Graphics::Dimension& size);

/// Quality 95, 4:2:0, slow integer DCT. `metadata` is whole segments, or empty, and goes before
/// everything else. `encoded` is reused when its block is large enough. kInvalidArgument for sizes
/// that are not acceptable.
result EncodeJpeg(const PixelView& picture, std::span<const std::uint8_t> metadata,
                  EncodedPicture& encoded);

/// Appends a whole segment APP1 or APP2, as `number` says, with that content; nothing when that is
/// more than a segment can hold.
void AppendSegment(int number, std::span<const std::uint8_t> content,
                   std::vector<std::uint8_t>& segments);

/// Appends a colour profile, or nothing where it is empty, as whole segments.
void AppendColourProfile(std::span<const std::uint8_t> profile,
                         std::vector<std::uint8_t>& segments);

/// The colour profile of a JPEG; empty when there is none.
std::vector<std::uint8_t> ReadJpegProfile(std::span<const std::uint8_t> data);

}  // namespace Osp::Media
