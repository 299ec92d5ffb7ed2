#include "sepia.h"

#include "channel_blocks.h"

namespace Kivo::Effects {

namespace {

constexpr ChannelPattern<double> kWeights{0.299, 0.587, 0.114};
constexpr ChannelPattern<std::uint8_t> kRaise{49, 0, 0};
constexpr ChannelPattern<std::uint8_t> kHighest{206, 255, 255};
constexpr ChannelPattern<std::uint8_t> kLower{0, 14, 56};

struct SepiaBlock {
    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out) {
        alignas(64) double terms[kBlockBytes + 2];
        alignas(64) std::uint8_t luminance[kBlockBytes + 2];
        alignas(64) std::uint8_t spread[kBlockBytes];
        terms[kBlockBytes] = terms[kBlockBytes + 1] = 0;
        luminance[0] = luminance[1] = 0;
        for (std::size_t at = 0; at < kBlockBytes; at += kPatternBytes) {
            for (std::size_t i = 0; i < kPatternBytes; ++i)
                terms[at + i] = in[at + i] * kWeights[i];
        }
        for (std::size_t at = 0; at < kBlockBytes; at += kPatternBytes) {
            const double* from = terms + at;
            for (std::size_t i = 0; i < kPatternBytes; ++i) {
                // Green is added to red first: an integer luminance, or another order, truncates
                // some thousand colours to another value.
                const int sum = static_cast<int>(from[i + 1] + from[i] + from[i + 2]);
                luminance[at + i + 2] = static_cast<std::uint8_t>(sum & kFirstOfPixel[i]);
            }
        }
        SpreadFirstOfPixel(luminance, spread);
        for (std::size_t at = 0; at < kBlockBytes; at += kPatternBytes) {
            for (std::size_t i = 0; i < kPatternBytes; ++i) {
                const std::uint8_t value = spread[at + i];
                const std::uint8_t raised = static_cast<std::uint8_t>(
                    (value < kHighest[i] ? value : kHighest[i]) + kRaise[i]);
                out[at + i] = static_cast<std::uint8_t>((raised > kLower[i] ? raised : kLower[i]) -
                                                        kLower[i]);
            }
        }
    }
};

}  // namespace

void Sepia(ConstPixels source, Pixels destination, Rows rows) {
    const Rows clipped = rows.ClippedTo(source.height);
    RunOverRows<SepiaBlock>(source, destination, clipped.first, clipped.last);
}

}  // namespace Kivo::Effects
