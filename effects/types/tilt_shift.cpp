#include "effects/types/tilt_shift.h"

#include <algorithm>
#include <cassert>
#include <optional>

#include "effects/blur/separable_blur.h"
#include "effects/pixels/channel_blocks.h"
#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

namespace {

/// Two curves, in integers that give the same as the single-precision formulas for every byte:
/// A lifts and steepens, (150 v - 19200) / 100 + 153.5, and B steepens, (120 v - 15360) / 100 +
/// 128.5, both truncated and clamped. Red goes through B alone: deliberate, the asymmetry is the
/// look.
struct ToneBlock {
    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out) {
        for (std::size_t at = 0; at < kBlockBytes; at += kPatternBytes) {
            for (std::size_t i = 0; i < kPatternBytes; ++i) {
                const std::uint16_t value = in[at + i];
                const auto tripled = static_cast<std::uint16_t>(3 * value);
                const auto lifted = static_cast<std::uint16_t>(
                    std::min<std::uint16_t>(SaturatingDifference(tripled, 77) >> 1, 255));
                const auto chosen = static_cast<std::uint16_t>((value & kFirstOfPixel[i]) |
                                                               (lifted & ~kFirstOfPixel[i]));
                const auto sixfold = static_cast<std::uint16_t>(6 * chosen);
                const std::uint16_t fives = SaturatingDifference(sixfold, 126);
                // Clamped before it is divided, or else the vectoriser works in 32 bits.
                const std::uint16_t clamped = fives < 1279 ? fives : 1279;
                out[at + i] = static_cast<std::uint8_t>((std::uint32_t{clamped} * 13108) >> 16);
            }
        }
    }
};

/// Rows of the upper and lower third are blurred more the nearer they are to the border.
int LevelOfRow(int y, int height) {
    const int third = height / 3;
    const int rowsPerLevel = std::max(height / 30, 1);
    int level = 0;
    if (y < third) {
        level = 9 - y / rowsPerLevel;
    } else if (y > third * 2) {
        level = 9 - (height - y) / rowsPerLevel;
    }
    // Heights that thirty does not divide would reach below 0.
    return std::max(level, 0);
}

}  // namespace

void TiltShift(ConstPixels source, Pixels destination, const GaussianLevels& levels,
               Scratch& scratch, Rows rows) {
    assert(AreAlikeAndApart(source, destination));
    const LinePlan down(source.height, kGradedLevel, levels);
    std::array<std::optional<LinePlan>, GaussianLevels::kCount> across;
    const auto rowBytes = static_cast<std::size_t>(source.StrideBytes());
    Scratch::Scope scope(scratch);
    float* const work = scope.Take<float>(RowWorkFloats(source.width, 3)).data();
    std::uint8_t* const toned = scope.Take<std::uint8_t>(rowBytes).data();
    BlurInBands(
        down, source.StrideBytes(), rows.ClippedTo(source.height), scratch,
        [&](int y, std::uint8_t* row) {
            const int level = LevelOfRow(y, source.height);
            auto& plan = across[static_cast<std::size_t>(level)];
            if (!plan) plan.emplace(source.width, level, levels);
            RunVectorised<EveryBlock<ToneBlock>>(source.Row(y), toned, rowBytes);
            BlurRow(toned, row, 3, *plan, work);
        },
        [&](int y) { return destination.Row(y); }, [](int, int) {});
}

}  // namespace Kivo::Effects
