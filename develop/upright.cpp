#include "develop/upright.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace Kivo::Tools {

namespace {

/// Where the first pixel of the upright picture lies in the stored one, and whether its rows are
/// the stored columns.
struct Turn {
    bool fromRight;
    bool fromBottom;
    bool transposed;
};

constexpr std::array<Turn, 9> kTurns{{{},
                                      {},
                                      {true, false, false},
                                      {true, true, false},
                                      {false, true, false},
                                      {false, false, true},
                                      {false, true, true},
                                      {true, true, true},
                                      {true, false, true}}};

/// `count` pixels that lie `step` bytes apart.
void CopyPixels(const std::uint8_t* in, std::ptrdiff_t step, std::uint8_t* out, int count) {
    for (int i = 0; i < count; ++i, in += step, out += 3) std::memcpy(out, in, 3);
}

}  // namespace

void TurnUpright(Effects::ConstPixels picture, int orientation, Effects::Pixels upright) {
    const Turn turn = kTurns[IsUpright(orientation) ? 1 : static_cast<std::size_t>(orientation)];
    const std::ptrdiff_t right = turn.fromRight ? -3 : 3;
    const std::ptrdiff_t down = turn.fromBottom ? -picture.StrideBytes() : picture.StrideBytes();
    const std::uint8_t* const first =
        picture.Row(turn.fromBottom ? picture.height - 1 : 0) +
        (turn.fromRight ? std::ptrdiff_t{3} * (picture.width - 1) : 0);
    const std::ptrdiff_t alongRow = turn.transposed ? down : right;
    const std::ptrdiff_t toNextRow = turn.transposed ? right : down;
    // Squares of pixels, so that both the columns read and the rows written stay in the cache.
    constexpr int kSquare = 16;
    for (int top = 0; top < upright.height; top += kSquare) {
        const int bottom = std::min(top + kSquare, upright.height);
        for (int left = 0; left < upright.width; left += kSquare) {
            const int width = std::min(kSquare, upright.width - left);
            for (int y = top; y < bottom; ++y) {
                CopyPixels(first + toNextRow * y + alongRow * left, alongRow,
                           upright.Row(y) + std::ptrdiff_t{3} * left, width);
            }
        }
    }
}

}  // namespace Kivo::Tools
