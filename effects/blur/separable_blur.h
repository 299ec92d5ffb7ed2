// The two passes of a blurred picture, streamed through memory that stays in the cache.
#pragma once

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/blur/blur.h"
#include "effects/blur/line_plan.h"
#include "effects/pixels/pixels.h"
#include "effects/pixels/scratch.h"

namespace Kivo::Effects {

/// Output rows that are blurred vertically together, and the rows they are made from.
inline constexpr int kBandRows = 32;
inline constexpr int kWindowRows = kBandRows + 2 * kEndSamples;

/// Blurs a row of samples of `bytes` bytes (1 or 3). `work` has room for RowWorkFloats.
void BlurRow(const std::uint8_t* source, std::uint8_t* destination, int bytes, const LinePlan& plan,
             float* work);
constexpr std::size_t RowWorkFloats(int length, int bytes) {
    return static_cast<std::size_t>(length + 2 * kEndSamples) * static_cast<std::size_t>(bytes);
}

/// A band of output rows and the window of input rows around it.
struct ColumnBand {
    std::array<const std::uint8_t*, kWindowRows> rows;  // not owned; null beyond the picture
    int first;                                          // row of the picture
    int count;
    std::ptrdiff_t rowBytes;
    const LinePlan* plan;  // not owned; of the picture's height
    std::uint8_t* out;     // not owned; `count` rows
    float* tile;           // not owned; room for kTileFloats
};
inline constexpr int kTileBytes = 128;
inline constexpr std::size_t kTileFloats = std::size_t{kWindowRows} * kTileBytes;

void BlurColumns(const ColumnBand& band);

/// Blurs the rows of a picture with `plan` of its height. makeRow(y, bytes) produces the row-wise
/// blurred row y, once for each row within reach and in order; target(y) is where `count` rows from
/// row y go, and done(y, count) says that they are there.
template <class MakeRow, class Target, class Done>
void BlurInBands(const LinePlan& plan, std::ptrdiff_t rowBytes, Rows rows, Scratch& scratch,
                 MakeRow makeRow, Target target, Done done) {
    assert(rows.first >= 0 && rows.last <= plan.Length());
    Scratch::Scope scope(scratch);
    const std::ptrdiff_t ringStride = (rowBytes + 63) / 64 * 64;
    std::uint8_t* const ring =
        scope.Take<std::uint8_t>(static_cast<std::size_t>(ringStride * kWindowRows)).data();
    const auto ringRow = [&](int y) { return ring + y % kWindowRows * ringStride; };
    ColumnBand band{};
    band.rowBytes = rowBytes;
    band.plan = &plan;
    band.tile = scope.Take<float>(kTileFloats).data();
    int made = std::max(rows.first - kEndSamples, 0);
    for (int y = rows.first; y < rows.last; y += kBandRows) {
        band.first = y;
        band.count = std::min(kBandRows, rows.last - y);
        const int reach = std::min(y + band.count + kEndSamples, plan.Length());
        for (; made < reach; ++made) makeRow(made, ringRow(made));
        for (int i = 0; i < band.count + 2 * kEndSamples; ++i) {
            const int at = y - kEndSamples + i;
            band.rows[static_cast<std::size_t>(i)] =
                at >= 0 && at < plan.Length() ? ringRow(at) : nullptr;
        }
        band.out = target(y);
        BlurColumns(band);
        done(y, band.count);
    }
}

}  // namespace Kivo::Effects
