#include "osp/media/camera/i420.h"

#include <cassert>
#include <vector>

namespace Osp::Media {

namespace {

// ITU-R BT.601 in 256ths.
constexpr std::uint8_t Luma(int r, int g, int b) {
    return static_cast<std::uint8_t>(((66 * r + 129 * g + 25 * b + 128) >> 8) + 16);
}
constexpr std::uint8_t BlueChroma(int r, int g, int b) {
    return static_cast<std::uint8_t>(((-38 * r - 74 * g + 112 * b + 128) >> 8) + 128);
}
constexpr std::uint8_t RedChroma(int r, int g, int b) {
    return static_cast<std::uint8_t>(((112 * r - 94 * g - 18 * b + 128) >> 8) + 128);
}
static_assert(Luma(0, 0, 0) == 16 && Luma(255, 255, 255) == 235);
static_assert(BlueChroma(0, 0, 255) == 240 && RedChroma(255, 0, 0) == 240);

void ConvertLuma(const std::uint8_t* row, int width, std::uint8_t* luma) {
    for (int x = 0; x < width; ++x) {
        luma[x] = Luma(row[4 * x + 2], row[4 * x + 1], row[4 * x]);
    }
}

void ConvertChroma(const std::uint8_t* above, const std::uint8_t* below, int width,
                   std::uint8_t* cb, std::uint8_t* cr) {
    for (int x = 0; x < width / 2; ++x) {
        const int i = 8 * x;
        const auto mean = [&](int c) {
            return (above[i + c] + above[i + c + 4] + below[i + c] + below[i + c + 4] + 2) >> 2;
        };
        const int b = mean(0);
        const int g = mean(1);
        const int r = mean(2);
        cb[x] = BlueChroma(r, g, b);
        cr[x] = RedChroma(r, g, b);
    }
}

}  // namespace

void ConvertToI420(const PixelView& picture, const ColorGains& gains, std::uint8_t* frame) {
    const auto [width, height] = picture.size;
    assert(width > 0 && height > 0 && width % 2 == 0 && height % 2 == 0);
    assert(picture.strideBytes >= 4 * width);
    const std::ptrdiff_t pixels = static_cast<std::ptrdiff_t>(width) * height;
    std::uint8_t* const cb = frame + pixels;
    std::uint8_t* const cr = cb + pixels / 4;
    const auto rowBytes = static_cast<std::size_t>(width) * 4;
    std::vector<std::uint8_t> balanced(gains.IsNeutral() ? 0 : 2 * rowBytes);
    for (std::ptrdiff_t y = 0; y < height; y += 2) {
        const std::uint8_t* above = picture.pixels + y * picture.strideBytes;
        const std::uint8_t* below = above + picture.strideBytes;
        if (!gains.IsNeutral()) {
            ApplyGains(gains, above, balanced.data(), width);
            ApplyGains(gains, below, balanced.data() + rowBytes, width);
            above = balanced.data();
            below = above + rowBytes;
        }
        ConvertLuma(above, width, frame + y * width);
        ConvertLuma(below, width, frame + (y + 1) * width);
        const std::ptrdiff_t chromaRow = y / 2 * (width / 2);
        ConvertChroma(above, below, width, cb + chromaRow, cr + chromaRow);
    }
}

}  // namespace Osp::Media
