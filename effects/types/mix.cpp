#include "effects/types/mix.h"

#include <cassert>

#include "effects/pixels/preconditions.h"
#include "effects/pixels/vectorised.h"

namespace Kivo::Effects {

namespace {

struct MixRun {
    KIVO_INLINE void Run(const std::uint8_t* first, const std::uint8_t* in, std::uint8_t* out,
                         std::ptrdiff_t count) {
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            // Half of the sum, in bytes: what differs counts half, what is common counts whole.
            const int half = (first[i] ^ in[i]) >> 1;
            out[i] = static_cast<std::uint8_t>((first[i] & in[i]) + half);
        }
    }
};

}  // namespace

void Mix(ConstPixels first, ConstPixels source, Pixels destination, Rows rows) {
    assert(AreAlike(source, destination));
    assert(AreAlike(first, destination));
    const Rows clipped = rows.ClippedTo(source.height);
    RunVectorised<MixRun>(first.Row(clipped.first), source.Row(clipped.first),
                          destination.Row(clipped.first),
                          source.StrideBytes() * (clipped.last - clipped.first));
}

}  // namespace Kivo::Effects
