// PNG by the library alone, to check what the program makes of pictures.
#pragma once

#include <cstdint>
#include <png.h>
#include <string>
#include <vector>

namespace Kivo::Testing {

/// `format` is one of the library's PNG_FORMAT_ values.
std::string EncodePng(const std::vector<std::uint8_t>& pixels, int width, int height,
                      png_uint_32 format);
/// The PNG with another size in its header.
std::string PngClaiming(std::string png, std::uint32_t width, std::uint32_t height);

}  // namespace Kivo::Testing
