#include "effects/kernels/bw.h"

#include <cassert>

#include "effects/pixels/channel_blocks.h"
#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

namespace {

// The grey is three products of a byte and a double, each truncated by itself. Here each is the
// high half of a product of 16 bits, for which every processor has one instruction, with the weight
// in units of 1 / 65536, rounded up. So no product comes out too small; it would come out too large
// where the fraction that is truncated and what rounding the weight up adds, at most 0.0034, make 1
// together. Over the 3 x 256 products that there are, they never do. Grey fits a byte: white is 54
// + 182 + 18 = 254, not 255, which is deliberate.
constexpr ChannelPattern<std::uint16_t> kWeights{13927, 46885, 4726};

struct BwBlock {
    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out) {
        alignas(64) std::uint8_t terms[kBlockBytes + 2];
        alignas(64) std::uint8_t grey[kBlockBytes + 2];
        terms[kBlockBytes] = terms[kBlockBytes + 1] = grey[0] = grey[1] = 0;
        for (std::size_t at = 0; at < kBlockBytes; at += kPatternBytes) {
            for (std::size_t i = 0; i < kPatternBytes; ++i) {
                const std::uint32_t value = in[at + i];
                terms[at + i] = static_cast<std::uint8_t>((value * kWeights[i]) >> 16);
            }
        }
        for (std::size_t at = 0; at < kBlockBytes; at += kPatternBytes) {
            const std::uint8_t* from = terms + at;
            for (std::size_t i = 0; i < kPatternBytes; ++i) {
                const int sum = from[i] + from[i + 1] + from[i + 2];
                grey[at + i + 2] = static_cast<std::uint8_t>(sum & kFirstOfPixel[i]);
            }
        }
        SpreadFirstOfPixel(grey, out);
    }
};

}  // namespace

void BW(ConstPixels source, Pixels destination, Rows rows) {
    assert(AreAlike(source, destination));
    const Rows clipped = rows.ClippedTo(source.height);
    RunOverRows<BwBlock>(source, destination, clipped.first, clipped.last);
}

}  // namespace Kivo::Effects
