#include "effects/kernels/negative.h"

#include <cassert>

#include "effects/pixels/preconditions.h"
#include "effects/pixels/vectorised.h"

namespace Kivo::Effects {

namespace {

struct NegativeRun {
    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out, std::ptrdiff_t count) {
        for (std::ptrdiff_t i = 0; i < count; ++i) out[i] = static_cast<std::uint8_t>(~in[i]);
    }
};

}  // namespace

void Negative(ConstPixels source, Pixels destination, Rows rows) {
    assert(AreAlike(source, destination));
    const Rows clipped = rows.ClippedTo(source.height);
    RunVectorised<NegativeRun>(source.Row(clipped.first), destination.Row(clipped.first),
                               source.StrideBytes() * (clipped.last - clipped.first));
}

}  // namespace Kivo::Effects
