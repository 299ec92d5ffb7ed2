#include "effects/blur/separable_blur.h"

#include <cassert>

#include "effects/pixels/preconditions.h"
#include "effects/pixels/vectorised.h"

// A blurred picture is rows first, then columns, each pass rounding to bytes. Both give the same
// bytes as the one-line blur with its tables of products, at every vector width:
//
// - One lane is one byte of the result. Its taps are added in ascending order into a
// single-precision
//   sum, never regrouped and never fused with the multiplication (-ffp-contract=off), so a vector
//   does what the scalar loop does. A weight times a byte is the entry of its product table.
// - The span of a sample s starts nine samples before it at every level: a level l below 9 shifts
// the
//   line by 9 - l towards its end. That is deliberate, it is the look. `work` has nine samples of
//   zeros before and behind the line, so sample s is at work[s + 9] and the taps of s are at
//   work[s], work[s + 1] and so on, for end samples, too: a zero that is added changes no sum, and
//   what it stands for has not been counted in the divisor.
// - Level 0 has one weight, which is 1, so its samples are copies of those nine before. They are
//   never converted; of the sharp middle only the nine samples at its borders are, which their
//   neighbours reach.
//
// Columns are blurred as rows of columns: the level belongs to the row, so all bytes of a row have
// the same weights, and samples that are one below the other lie a fixed step apart in a tile of
// floats, kWindowRows rows of kTileBytes each (25 KB), which the first-level cache holds. No column
// is ever gathered. The rows of a band and of its reach, kBandRows + 2 * 9, are just what the ring
// of BlurInBands holds: row y is at y % kWindowRows, and a row is overwritten when the last band
// that reaches it is done. So every row is blurred once for all bands of a call, and a call for
// some rows of a picture, as when bands run on several threads, begins with the nine rows above
// them and gives the same bytes.

namespace Kivo::Effects {

namespace {

/// A weighted sum for each of `count` bytes: taps at in[i], in[i + step], ..., in ascending order,
/// rounded.
template <int taps, int step>
KIVO_INLINE void Filter(const float* in, const float* weights, std::uint8_t* out,
                        std::ptrdiff_t count) {
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        float sum = 0;
#pragma GCC unroll 19
        for (int k = 0; k < taps; ++k) sum += weights[k] * in[i + k * step];
        out[i] = static_cast<std::uint8_t>(static_cast<int>(sum + 0.5F));
    }
}

/// The same at the widest level for end samples, divided by divisors[i * divisorStep]. What lies
/// beyond the end of the line is zero in `in`, and adding zeros changes no sum.
template <int step>
KIVO_INLINE void FilterEnd(const float* in, const float* weights, const float* divisors,
                           std::ptrdiff_t divisorStep, std::uint8_t* out, std::ptrdiff_t count) {
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        float sum = 0;
#pragma GCC unroll 19
        for (int k = 0; k < GaussianLevels::kLongest; ++k) sum += weights[k] * in[i + k * step];
        out[i] =
            static_cast<std::uint8_t>(static_cast<int>(sum / divisors[i * divisorStep] + 0.5F));
    }
}

template <int step>
KIVO_INLINE void FilterAtLevel(int level, const float* in, const float* weights, std::uint8_t* out,
                               std::ptrdiff_t count) {
    switch (level) {
        case 1:
            return Filter<3, step>(in, weights, out, count);
        case 2:
            return Filter<5, step>(in, weights, out, count);
        case 3:
            return Filter<7, step>(in, weights, out, count);
        case 4:
            return Filter<9, step>(in, weights, out, count);
        case 5:
            return Filter<11, step>(in, weights, out, count);
        case 6:
            return Filter<13, step>(in, weights, out, count);
        case 7:
            return Filter<15, step>(in, weights, out, count);
        case 8:
            return Filter<17, step>(in, weights, out, count);
        default:
            return Filter<19, step>(in, weights, out, count);
    }
}

KIVO_INLINE void ToFloats(const std::uint8_t* in, float* out, std::ptrdiff_t count) {
    for (std::ptrdiff_t i = 0; i < count; ++i) out[i] = static_cast<float>(in[i]);
}

/// `work` holds the row with a zero sample for each tap beyond either end.
template <int bytes>
struct RowKernel {
    KIVO_INLINE void Run(const std::uint8_t* source, std::uint8_t* destination,
                         const LinePlan* plan, float* work) {
        const LinePlan::Segment sharp = plan->Sharp();
        const int length = plan->Length();
        Load(source, 0, std::min(sharp.first + kEndSamples, length), work);
        Load(source, std::max(sharp.last - kEndSamples, 0), length, work);
        for (int i = 0; i < kEndSamples * bytes; ++i) {
            work[i] = 0;
            work[(kEndSamples + length) * bytes + i] = 0;
        }
        End(destination, 0, plan->LeadingEnd(), *plan, work);
        for (const LinePlan::Segment& segment : plan->Segments()) {
            std::uint8_t* const out = destination + segment.first * bytes;
            const std::ptrdiff_t count = (segment.last - segment.first) * bytes;
            if (segment.level == 0) {
                std::memcpy(out, source + (segment.first - kEndSamples) * bytes,
                            static_cast<std::size_t>(count));
                continue;
            }
            FilterAtLevel<bytes>(segment.level, work + segment.first * bytes,
                                 plan->Levels().Weights(segment.level).data(), out, count);
        }
        End(destination, plan->TrailingBegin(), length, *plan, work);
    }

    KIVO_INLINE void Load(const std::uint8_t* source, int first, int last, float* work) {
        ToFloats(source + first * bytes, work + (first + kEndSamples) * bytes,
                 (last - first) * bytes);
    }

    KIVO_INLINE void End(std::uint8_t* destination, int first, int last, const LinePlan& plan,
                         const float* work) {
        float divisors[GaussianLevels::kLongest * bytes];
        for (int s = first; s < last; ++s) {
            for (int b = 0; b < bytes; ++b) divisors[(s - first) * bytes + b] = plan.EndWeight(s);
        }
        FilterEnd<bytes>(work + first * bytes,
                         plan.Levels().Weights(GaussianLevels::kCount - 1).data(), divisors, 1,
                         destination + first * bytes, (last - first) * bytes);
    }
};

struct ColumnKernel {
    KIVO_INLINE void Run(const ColumnBand* band) {
        bool sharp = true;
        int levels[kBandRows];
        for (int i = 0; i < band->count; ++i) {
            levels[i] = LevelOf(*band->plan, band->first + i);
            if (levels[i] != 0) {
                sharp = false;
                continue;
            }
            std::memcpy(band->out + i * band->rowBytes, band->rows[static_cast<std::size_t>(i)],
                        static_cast<std::size_t>(band->rowBytes));
        }
        if (sharp) return;
        for (std::ptrdiff_t at = 0; at < band->rowBytes; at += kTileBytes) {
            const std::ptrdiff_t count = std::min<std::ptrdiff_t>(kTileBytes, band->rowBytes - at);
            LoadTile(*band, at, count);
            for (int i = 0; i < band->count; ++i) {
                if (levels[i] != 0) FilterRow(*band, i, levels[i], at, count);
            }
        }
    }

    static constexpr int kEnd = -1;

    KIVO_INLINE int LevelOf(const LinePlan& plan, int y) {
        if (y < plan.LeadingEnd() || y >= plan.TrailingBegin()) return kEnd;
        for (const LinePlan::Segment& segment : plan.Segments()) {
            if (y < segment.last) return segment.level;
        }
        return 0;
    }

    KIVO_INLINE void LoadTile(const ColumnBand& band, std::ptrdiff_t at, std::ptrdiff_t count) {
        for (int i = 0; i < band.count + 2 * kEndSamples; ++i) {
            const std::uint8_t* const row = band.rows[static_cast<std::size_t>(i)];
            float* const out = band.tile + i * kTileBytes;
            if (row == nullptr) {
                std::memset(out, 0, sizeof(float) * kTileBytes);
            } else {
                ToFloats(row + at, out, count);
            }
        }
    }

    KIVO_INLINE void FilterRow(const ColumnBand& band, int i, int level, std::ptrdiff_t at,
                               std::ptrdiff_t count) {
        std::uint8_t* const out = band.out + i * band.rowBytes + at;
        const float* const in = band.tile + i * kTileBytes;
        const GaussianLevels& levels = band.plan->Levels();
        if (level == kEnd) {
            const float divisor = band.plan->EndWeight(band.first + i);
            FilterEnd<kTileBytes>(in, levels.Weights(GaussianLevels::kCount - 1).data(), &divisor,
                                  0, out, count);
        } else {
            FilterAtLevel<kTileBytes>(level, in, levels.Weights(level).data(), out, count);
        }
    }
};

}  // namespace

void BlurRow(const std::uint8_t* source, std::uint8_t* destination, int bytes, const LinePlan& plan,
             float* work) {
    assert(bytes == 1 || bytes == 3);
    assert(AreApart(source, static_cast<std::size_t>(plan.Length() * bytes), destination,
                    static_cast<std::size_t>(plan.Length() * bytes)));
    if (bytes == 1) {
        RunVectorised<RowKernel<1>>(source, destination, &plan, work);
    } else {
        RunVectorised<RowKernel<3>>(source, destination, &plan, work);
    }
}

void BlurColumns(const ColumnBand& band) {
    assert(band.count > 0 && band.count <= kBandRows && band.rowBytes > 0);
    assert(band.first >= 0 && band.first + band.count <= band.plan->Length());
    RunVectorised<ColumnKernel>(&band);
}

}  // namespace Kivo::Effects
