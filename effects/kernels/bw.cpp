#include "effects/kernels/bw.h"

#include "effects/pixels/channel_blocks.h"

namespace Kivo::Effects {

namespace {

// In units of 1 / 65536, rounded up: gives the truncated double product for every byte.
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
    const Rows clipped = rows.ClippedTo(source.height);
    RunOverRows<BwBlock>(source, destination, clipped.first, clipped.last);
}

}  // namespace Kivo::Effects
