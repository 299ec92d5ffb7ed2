// Pixels to BMP.
#pragma once

#include <cstdint>

#include "osp/media/picture/pixel_view.h"

/// Any thread, several at once.
namespace Osp::Media {

constexpr int kBmpHeaderBytes = 54;

/// Of the whole file; 0 when it would not fit an int.
int BmpFileBytes(const Graphics::Dimension& size);

/// Writes BmpFileBytes(picture.size) bytes: the header, then 24 bits a pixel B, G, R, bottom row
/// first, each row padded to a multiple of four bytes.
void EncodeBmp(const PixelView& picture, std::uint8_t* file);

}  // namespace Osp::Media
