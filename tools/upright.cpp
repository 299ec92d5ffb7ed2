#include "upright.h"

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
    for (int y = 0; y < upright.height; ++y) {
        std::uint8_t* const out = upright.Row(y);
        for (int x = 0; x < upright.width; ++x) {
            std::memcpy(out + std::ptrdiff_t{3} * x, first + toNextRow * y + alongRow * x, 3);
        }
    }
}

}  // namespace Kivo::Tools
