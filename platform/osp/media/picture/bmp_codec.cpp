#include "osp/media/picture/bmp_codec.h"

#include <algorithm>
#include <climits>
#include <libyuv/convert_argb.h>
#include <libyuv/convert_from_argb.h>
#include <libyuv/planar_functions.h>

namespace Osp::Media {

namespace {

constexpr int kInfoHeaderBytes = 40;
constexpr int kPixelsPerMetre = 2835;  // 72 an inch

int RowBytes(int width) {
    return (width * 3 + 3) / 4 * 4;
}

class LittleEndianWriter {
  public:
    explicit LittleEndianWriter(std::uint8_t* target) : target_(target) {}
    LittleEndianWriter& U16(unsigned value) { return Write(value, 2); }
    LittleEndianWriter& U32(unsigned value) { return Write(value, 4); }

  private:
    LittleEndianWriter& Write(unsigned value, int bytes) {
        for (int i = 0; i < bytes; ++i) *target_++ = static_cast<std::uint8_t>(value >> (8 * i));
        return *this;
    }
    std::uint8_t* target_;  // not owned
};

void WriteHeader(const Graphics::Dimension& size, std::uint8_t* file) {
    const auto fileBytes = static_cast<unsigned>(BmpFileBytes(size));
    LittleEndianWriter(file)
        .U16('B' | 'M' << 8)
        .U32(fileBytes)
        .U32(0)
        .U32(kBmpHeaderBytes)
        .U32(kInfoHeaderBytes)
        .U32(static_cast<unsigned>(size.width))
        .U32(static_cast<unsigned>(size.height))
        .U16(1)   // plane
        .U16(24)  // bits a pixel
        .U32(0)   // not compressed
        .U32(fileBytes - kBmpHeaderBytes)
        .U32(kPixelsPerMetre)
        .U32(kPixelsPerMetre)
        .U32(0)  // no palette
        .U32(0);
}

// A negative height turns the picture upside down, which is the order of a BMP's rows. libyuv names
// formats by their value in a register: its ARGB lies in memory as B, G, R, A, its RAW as R, G, B.
void WriteRows(const PixelView& picture, std::uint8_t* rows) {
    const auto [width, height] = picture.size;
    const int rowBytes = RowBytes(width);
    switch (picture.layout) {
        case PixelLayout::kRgb:
            libyuv::RAWToRGB24(picture.pixels, picture.strideBytes, rows, rowBytes, width, -height);
            break;
        case PixelLayout::kRgba:
            // From R, G, B, A the conversion to "RAW" takes the first three in reverse.
            libyuv::ARGBToRAW(picture.pixels, picture.strideBytes, rows, rowBytes, width, -height);
            break;
        case PixelLayout::kBgrx:
            libyuv::ARGBToRGB24(picture.pixels, picture.strideBytes, rows, rowBytes, width,
                                -height);
            break;
    }
    const int usedBytes = width * 3;
    for (int y = 0; y < height && usedBytes < rowBytes; ++y) {
        std::fill(rows + y * static_cast<std::ptrdiff_t>(rowBytes) + usedBytes,
                  rows + (y + 1) * static_cast<std::ptrdiff_t>(rowBytes), std::uint8_t{0});
    }
}

}  // namespace

int BmpFileBytes(const Graphics::Dimension& size) {
    const long long bytes = kBmpHeaderBytes + static_cast<long long>(RowBytes(size.width)) *
                                                  static_cast<long long>(size.height);
    return bytes <= INT_MAX ? static_cast<int>(bytes) : 0;
}

void EncodeBmp(const PixelView& picture, std::uint8_t* file) {
    WriteHeader(picture.size, file);
    WriteRows(picture, file + kBmpHeaderBytes);
}

}  // namespace Osp::Media
