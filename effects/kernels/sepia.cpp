#include "effects/kernels/sepia.h"

#include <cassert>

#include "effects/pixels/channel_blocks.h"
#include "effects/pixels/pixel_words.h"
#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

namespace {

// The three shifts with their clamping, as a minimum, a sum, a maximum and a difference of bytes:
// value + 49 up to 255 is min(value, 206) + 49, and value - 14 from 0 is max(value, 14) - 14. A
// channel that is not raised or not lowered has the neutral constants there.

constexpr ChannelPattern<std::uint8_t> kRaise{49, 0, 0};
constexpr ChannelPattern<std::uint8_t> kHighest{206, 255, 255};
constexpr ChannelPattern<std::uint8_t> kLower{0, 14, 56};

struct SepiaBlock {
    static constexpr std::size_t kPixels = kBlockBytes / 3;

    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out, bool shuffles) {
        alignas(64) std::uint32_t words[kPixels];
        alignas(64) std::uint8_t luminances[kPixels];
        alignas(64) std::uint8_t grey[kBlockBytes];
        WidenPixels(in, words, kPixels, shuffles);
        for (std::size_t i = 0; i < kPixels; ++i) {
            const auto red = static_cast<int>(words[i] & 0xFF);
            const auto green = static_cast<int>(words[i] >> 8 & 0xFF);
            const auto blue = static_cast<int>(words[i] >> 16 & 0xFF);
            // Green is added to red first: an integer luminance, or another order, truncates some
            // thousand colours to another value.
            const auto luminance = static_cast<int>(green * 0.587 + red * 0.299 + blue * 0.114);
            luminances[i] = static_cast<std::uint8_t>(luminance);
        }
        SpreadGrey(luminances, grey, kPixels, shuffles);
        for (std::size_t at = 0; at < kBlockBytes; at += kPatternBytes) {
            for (std::size_t i = 0; i < kPatternBytes; ++i) {
                const std::uint8_t value = grey[at + i];
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
    assert(AreAlike(source, destination));
    const Rows clipped = rows.ClippedTo(source.height);
    RunOverRows<SepiaBlock>(source, destination, clipped.first, clipped.last, CanShuffleBytes());
}

}  // namespace Kivo::Effects
