#include "effects/kernels/edge.h"

#include <algorithm>
#include <cassert>

#include "effects/pixels/preconditions.h"
#include "effects/pixels/vectorised.h"

namespace Kivo::Effects {

namespace {

/// A neighbour outside the picture is replaced by the pixel next to it, which belongs to the
/// neighbourhood anyway, so the range stays the same.
struct EdgeRow {
    KIVO_INLINE void Run(const std::uint8_t* above, const std::uint8_t* here,
                         const std::uint8_t* below, std::uint8_t* out, std::uint8_t* highest,
                         std::uint8_t* lowest, std::ptrdiff_t count) {
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            highest[i + 3] = std::max(std::max(above[i], below[i]), here[i]);
            lowest[i + 3] = std::min(std::min(above[i], below[i]), here[i]);
        }
        for (std::ptrdiff_t c = 0; c < 3; ++c) {
            highest[c] = highest[c + 3];
            lowest[c] = lowest[c + 3];
            highest[count + 3 + c] = highest[count + c];
            lowest[count + 3 + c] = lowest[count + c];
        }
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            const std::uint8_t high =
                std::max(std::max(highest[i], highest[i + 3]), highest[i + 6]);
            const std::uint8_t low = std::min(std::min(lowest[i], lowest[i + 3]), lowest[i + 6]);
            out[i] = static_cast<std::uint8_t>(255 - (high - low));
        }
    }
};

}  // namespace

void Edge(ConstPixels source, Pixels destination, Scratch& scratch, Rows rows) {
    assert(AreAlikeAndApart(source, destination));
    const Rows clipped = rows.ClippedTo(source.height);
    const auto lineBytes = static_cast<std::size_t>(source.StrideBytes()) + 6;
    Scratch::Scope scope(scratch);
    std::uint8_t* const highest = scope.Take<std::uint8_t>(lineBytes).data();
    std::uint8_t* const lowest = scope.Take<std::uint8_t>(lineBytes).data();
    for (int y = clipped.first; y < clipped.last; ++y) {
        RunVectorised<EdgeRow>(source.Row(std::max(y - 1, 0)), source.Row(y),
                               source.Row(std::min(y + 1, source.height - 1)), destination.Row(y),
                               highest, lowest, source.StrideBytes());
    }
}

}  // namespace Kivo::Effects
