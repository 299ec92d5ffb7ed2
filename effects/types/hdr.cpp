#include "effects/types/hdr.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>

#include "effects/blur/separable_blur.h"
#include "effects/pixels/pixel_words.h"
#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

namespace {

/// Inverted luminance. One truncation of the whole sum, unlike black and white.
struct MaskRow {
    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* mask, std::ptrdiff_t pixels) {
        for (std::ptrdiff_t x = 0; x < pixels; ++x) {
            const double luminance =
                in[3 * x + 1] * 0.7154 + in[3 * x] * 0.2125 + in[3 * x + 2] * 0.0721;
            mask[x] = static_cast<std::uint8_t>(255 - static_cast<int>(luminance));
        }
    }
};

struct CombineRow {
    KIVO_INLINE void Run(const std::uint8_t* in, const std::uint8_t* mask, std::uint8_t* spread,
                         std::uint8_t* out, std::size_t pixels, bool shuffles) {
        SpreadGrey(mask, spread, pixels, shuffles);
        for (std::size_t i = 0; i < 3 * pixels; ++i) {
            // 0.2 m + 0.8 c in single precision, truncated, is (m + 4 c) / 5 in integers. Both
            // constants lie a little above their decimals in single precision, so a whole result
            // never comes out just below; and one that is not whole is at least 0.2 away from the
            // next, ten thousand times the rounding. Division by 5 is multiplication by 13108 /
            // 65536: too much by 0.016 for the largest sum, 1275, where 0.2 would be free.
            const auto fives = static_cast<std::uint16_t>(spread[i] + 4 * in[i]);
            const auto mixed = static_cast<std::int16_t>((std::uint32_t{fives} * 13108) >> 16);
            // A tenth of the distance from 128 more, truncated towards zero; by 6554 / 65536, which
            // for distances up to 128 is too much by less than 0.001, where 0.1 would be free.
            const auto offset = static_cast<std::int16_t>(mixed - 128);
            const auto distance = static_cast<std::uint16_t>(std::abs(offset));
            const auto tenth = static_cast<std::int16_t>((std::uint32_t{distance} * 6554) >> 16);
            const auto value = static_cast<std::int16_t>(mixed + (offset < 0 ? -tenth : tenth));
            out[i] = static_cast<std::uint8_t>(
                std::min<std::int16_t>(std::max<std::int16_t>(value, 0), 255));
        }
    }
};

}  // namespace

void HDR(ConstPixels source, Pixels destination, const GaussianLevels& levels, Scratch& scratch,
         Rows rows) {
    assert(AreAlikeAndApart(source, destination));
    constexpr int kWidest = GaussianLevels::kCount - 1;
    const LinePlan across(source.width, kWidest, levels);
    const LinePlan down(source.height, kWidest, levels);
    const auto width = static_cast<std::size_t>(source.width);
    Scratch::Scope scope(scratch);
    const bool shuffles = CanShuffleBytes();
    float* const work = scope.Take<float>(RowWorkFloats(source.width, 1)).data();
    std::uint8_t* const inverted = scope.Take<std::uint8_t>(width).data();
    std::uint8_t* const spread = scope.Take<std::uint8_t>(3 * width).data();
    // The mask is grey, so one channel of it is blurred.
    std::uint8_t* const mask = scope.Take<std::uint8_t>(width * kBandRows).data();
    BlurInBands(
        down, source.width, rows.ClippedTo(source.height), scratch,
        [&](int y, std::uint8_t* row) {
            RunVectorised<MaskRow>(source.Row(y), inverted, std::ptrdiff_t{source.width});
            BlurRow(inverted, row, 1, across, work);
        },
        [&](int) { return mask; },
        [&](int first, int count) {
            for (int i = 0; i < count; ++i) {
                RunVectorised<CombineRow>(
                    source.Row(first + i),
                    static_cast<const std::uint8_t*>(mask) + std::ptrdiff_t{source.width} * i,
                    spread, destination.Row(first + i), width, shuffles);
            }
        });
}

}  // namespace Kivo::Effects
