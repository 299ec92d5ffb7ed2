#include "osp/media/picture/upright.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstring>

namespace Osp::Media {

namespace {

/// Where the first pixel of the upright picture lies in the stored one, and whether its rows are
/// the stored columns.
struct Orientation {
    bool fromRight;
    bool fromBottom;
    bool isTransposed;
};

constexpr std::array<Orientation, 9> kOrientations{{{},
                                                    {},
                                                    {true, false, false},
                                                    {true, true, false},
                                                    {false, true, false},
                                                    {false, false, true},
                                                    {false, true, true},
                                                    {true, true, true},
                                                    {true, false, true}}};

template <int bytes>
void Turn(const PixelView& stored, const Orientation& orientation, std::uint8_t* upright) {
    const auto [width, height] = stored.size;
    const std::ptrdiff_t right = orientation.fromRight ? -bytes : bytes;
    const std::ptrdiff_t down = orientation.fromBottom ? -stored.strideBytes : stored.strideBytes;
    const std::uint8_t* const first =
        stored.pixels +
        (orientation.fromBottom ? std::ptrdiff_t{stored.strideBytes} * (height - 1) : 0) +
        (orientation.fromRight ? std::ptrdiff_t{bytes} * (width - 1) : 0);
    const std::ptrdiff_t alongRow = orientation.isTransposed ? down : right;
    const std::ptrdiff_t toNextRow = orientation.isTransposed ? right : down;
    const int rowPixels = orientation.isTransposed ? height : width;
    const int rows = orientation.isTransposed ? width : height;
    // Squares of pixels, so that both the columns read and the rows written stay in the cache.
    constexpr int kSquare = 16;
    for (int top = 0; top < rows; top += kSquare) {
        const int bottom = std::min(top + kSquare, rows);
        for (int left = 0; left < rowPixels; left += kSquare) {
            const int count = std::min(kSquare, rowPixels - left);
            for (int y = top; y < bottom; ++y) {
                const std::uint8_t* in = first + toNextRow * y + alongRow * left;
                std::uint8_t* out = upright + bytes * (std::ptrdiff_t{rowPixels} * y + left);
                for (int i = 0; i < count; ++i, in += alongRow, out += bytes) {
                    std::memcpy(out, in, bytes);
                }
            }
        }
    }
}

}  // namespace

void TurnUpright(const PixelView& stored, int orientation, std::uint8_t* upright) {
    assert(upright + PackedSize(stored.size, stored.layout) <= stored.pixels ||
           stored.pixels + std::ptrdiff_t{stored.strideBytes} * stored.size.height <= upright);
    const Orientation& turn =
        kOrientations[IsUpright(orientation) ? 1 : static_cast<std::size_t>(orientation)];
    if (stored.layout == PixelLayout::kRgb) {
        Turn<3>(stored, turn, upright);
    } else {
        Turn<4>(stored, turn, upright);
    }
}

}  // namespace Osp::Media
