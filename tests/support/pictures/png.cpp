#include "tests/support/pictures/png.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace Kivo::Testing {

std::string EncodePng(const std::vector<std::uint8_t>& pixels, int width, int height,
                      png_uint_32 format) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = format;
    std::string file(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t length = file.size();
    EXPECT_NE(png_image_write_to_memory(&image, file.data(), &length, 0, pixels.data(), 0, nullptr),
              0);
    file.resize(length);
    return file;
}

std::string PngClaiming(std::string png, std::uint32_t width, std::uint32_t height) {
    constexpr std::size_t kHeader = 12;  // its type and content, which its checksum is of
    constexpr unsigned kHeaderBytes = 17;
    auto* const bytes = reinterpret_cast<png_bytep>(png.data() + kHeader);
    png_save_uint_32(bytes + 4, width);
    png_save_uint_32(bytes + 8, height);
    png_save_uint_32(bytes + kHeaderBytes, static_cast<png_uint_32>(crc32(0, bytes, kHeaderBytes)));
    return png;
}

}  // namespace Kivo::Testing
