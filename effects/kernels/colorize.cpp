#include "effects/kernels/colorize.h"

#include <cassert>

#include "effects/kernels/hue2rgb.h"
#include "effects/pixels/channel_blocks.h"
#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

namespace {

/// The colour of every luminance, three bytes each, and one of slack for four-byte loads.
struct Tint {
    std::array<std::uint8_t, 256 * 4> bytes{};

    Tint(int hue, int saturation) {
        const float s = static_cast<float>(saturation) / 255;
        const float h = static_cast<float>(hue) * 360 / 255;
        for (std::size_t lum = 0; lum < 256; ++lum) {
            const float l = static_cast<float>(lum) / 255;
            const float m2 = l <= 0.5F ? l + s * l : l + s - l * s;
            const float m1 = 2 * l - m2;
            const float turns[3] = {h + 120, h, h - 120};
            for (std::size_t c = 0; c < 3; ++c) {
                const float value = s == 0 ? l : hue2rgb(m1, m2, turns[c]);
                bytes[4 * lum + c] = static_cast<std::uint8_t>(static_cast<int>(value * 255));
            }
        }
    }
};

// (306 R + 601 G + 117 B) >> 10 in 16 bits. 306 and 601 are 256 + 50 and 512 + 89, so the sum is
// 256 (R + 2 G) + (50 R + 89 G + 117 B), and 50 + 89 + 117 is 256: the second part is at most
// 65280 and fits. Shifting it by 8 before it is added to R + 2 G drops nothing that the shift by 2
// that remains would have kept. The colour depends on the luminance alone, hence a table of 256.
constexpr ChannelPattern<std::uint16_t> kWhole{1, 2, 0};
constexpr ChannelPattern<std::uint16_t> kPart{50, 89, 117};

struct ColorizeBlock {
    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out, const Tint* tint,
                         std::uint16_t keep, std::uint16_t take) {
        alignas(64) std::uint16_t wholes[kBlockBytes + 2];
        alignas(64) std::uint16_t parts[kBlockBytes + 2];
        alignas(64) std::uint8_t luminance[kBlockBytes];
        alignas(64) std::uint8_t colour[kBlockBytes + 1];
        wholes[kBlockBytes] = wholes[kBlockBytes + 1] = 0;
        parts[kBlockBytes] = parts[kBlockBytes + 1] = 0;
        for (std::size_t at = 0; at < kBlockBytes; at += kPatternBytes) {
            for (std::size_t i = 0; i < kPatternBytes; ++i) {
                wholes[at + i] = static_cast<std::uint16_t>(in[at + i] * kWhole[i]);
                parts[at + i] = static_cast<std::uint16_t>(in[at + i] * kPart[i]);
            }
        }
        for (std::size_t i = 0; i < kBlockBytes; ++i) {
            const auto whole =
                static_cast<std::uint16_t>(wholes[i] + wholes[i + 1] + wholes[i + 2]);
            const auto part = static_cast<std::uint16_t>(parts[i] + parts[i + 1] + parts[i + 2]);
            luminance[i] = static_cast<std::uint8_t>((whole + (part >> 8)) >> 2);
        }
        // Each store spills one byte that the next one overwrites.
        for (std::size_t i = 0; i < kBlockBytes; i += 3) {
            std::memcpy(colour + i, tint->bytes.data() + 4 * luminance[i], 4);
        }
        // keep + take is 256, so the sum fits 16 bits as well.
        for (std::size_t i = 0; i < kBlockBytes; ++i) {
            const auto blend = static_cast<std::uint16_t>(in[i] * keep + colour[i] * take);
            out[i] = static_cast<std::uint8_t>(blend >> 8);
        }
    }
};

}  // namespace

void Colorize(ConstPixels source, Pixels destination, int hue, int saturation, float opacity,
              Rows rows) {
    assert(AreAlike(source, destination));
    assert(hue >= 0 && hue <= 255 && saturation >= 0 && saturation <= 255);
    const Tint tint(hue, saturation);
    const float share = opacity < 0 ? 0.0F : opacity > 1 ? 1.0F : opacity;
    const auto take = static_cast<std::uint16_t>(share * 256);
    const auto keep = static_cast<std::uint16_t>(256 - take);
    const Rows clipped = rows.ClippedTo(source.height);
    RunOverRows<ColorizeBlock>(source, destination, clipped.first, clipped.last, &tint, keep, take);
}

}  // namespace Kivo::Effects
