#include "effects/types/vignet.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstdlib>

#include "effects/kernels/limit.h"
#include "effects/pixels/channel_blocks.h"
#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

namespace {

constexpr double kDarkest = 30.0;

/// So few that the bytes of all of them stay in the cache between the two steps.
constexpr int kRowsTogether = 8;

// 170, 140 and 150 percent of every distance from 128, in tenths.
constexpr ChannelPattern<std::uint8_t> kTenths{17, 14, 15};
constexpr ChannelPattern<std::uint16_t> kMiddle{17 * 128 - 1280, 14 * 128 - 1280, 15 * 128 - 1280};

struct ContrastBlock {
    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out) {
        for (std::size_t at = 0; at < kBlockBytes; at += kPatternBytes) {
            for (std::size_t i = 0; i < kPatternBytes; ++i) {
                const std::uint16_t value = in[at + i];
                // Distances are truncated towards the middle: below it, tenths are rounded up.
                const std::uint16_t up = value < 128 ? 9 : 0;
                const auto tenths = static_cast<std::uint16_t>(kTenths[i] * value + up);
                const std::uint16_t above = SaturatingDifference(tenths, kMiddle[i]);
                // Clamped before it is divided, or else the vectoriser works in 32 bits.
                const std::uint16_t clamped = above < 2559 ? above : 2559;
                out[at + i] = static_cast<std::uint8_t>((std::uint32_t{clamped} * 6554) >> 16);
            }
        }
    }
};

struct Darken {
    KIVO_INLINE void Run(std::uint8_t* bytes, const std::uint16_t* factors, std::uint16_t* spread,
                         std::ptrdiff_t pixels) {
        for (std::ptrdiff_t x = 0; x < pixels; ++x) {
            spread[3 * x] = spread[3 * x + 1] = spread[3 * x + 2] = factors[x];
        }
        for (std::ptrdiff_t i = 0; i < 3 * pixels; ++i) {
            bytes[i] = static_cast<std::uint8_t>((std::uint32_t{bytes[i]} * spread[i]) >> 16);
        }
    }
};

struct DarkenRow {
    KIVO_INLINE void Run(std::uint8_t* out, std::size_t width, VignetMap::RowDarkening row,
                         std::uint16_t* spread) {
        Darken::Run(out, row.factors, spread, row.first);
        Darken::Run(out + 3 * row.last, row.factors + row.last, spread,
                    static_cast<std::ptrdiff_t>(width) - row.last);
    }
};

/// A fraction with a denominator of at most 255 in each of the 65536 steps up to 1. There is at
/// most one, because two of them lie at least 1 / (255 * 254) apart.
struct Fractions {
    struct Fraction {
        std::uint8_t numerator = 0;
        std::uint8_t denominator = 0;
    };
    std::vector<Fraction> ofStep = std::vector<Fraction>(65537);

    Fractions() {
        for (unsigned q = 1; q < 256; ++q) {
            for (unsigned p = 0; p <= q; ++p) {
                ofStep[(p * 65536 + q - 1) / q] = {static_cast<std::uint8_t>(p),
                                                   static_cast<std::uint8_t>(q)};
            }
        }
    }
};

}  // namespace

VignetMap::Geometry::Geometry(int width, bool wide) {
    radius = static_cast<int>(width * 0.75);
    if (!wide) radius = static_cast<int>(radius + radius * -0.2);
    inner = radius / 3;
    // The narrowest pictures would have a span of 0.
    span = std::max(radius + radius / -3, 1);
}

double VignetMap::Geometry::Brightness(int squaredDistance) const {
    return std::max(radius - std::sqrt(static_cast<double>(squaredDistance)), kDarkest);
}

/// What has to come out is value * brightness / span, truncated, for every byte value. That depends
/// only on between which two fractions with denominators up to 255 the quotient lies, and each gap
/// between two such fractions holds a multiple of 1 / 65536: the next multiple above the quotient,
/// or, if a fraction lies in between, the one before. One 16-bit factor is therefore exact.
VignetMap::VignetMap(int width, int height, bool wide)
    : width_(width), height_(height), geometry_(width, wide) {
    if (IsTiny()) return;
    const Fractions fractions;
    const int cx = width / 2;
    const auto rowCount = static_cast<std::size_t>(height / 2 + 1);
    factors_.resize(rowCount * static_cast<std::size_t>(width));
    for (int dy = 0; dy <= height / 2; ++dy) {
        std::uint16_t* const row = factors_.data() + std::ptrdiff_t{width} * dy;
        int bright = 0;  // pixels to the right of the middle that keep their brightness
        for (int dx = 0; dx <= cx; ++dx) {
            const int squared = dx * dx + dy * dy;
            if (squared <= geometry_.inner * geometry_.inner) {
                bright = dx + 1;
                continue;
            }
            const double brightness = geometry_.Brightness(squared);
            auto step = static_cast<std::size_t>(std::ceil(brightness / geometry_.span * 65536));
            const auto fraction = fractions.ofStep[step];
            if (brightness * fraction.denominator < fraction.numerator * geometry_.span) --step;
            row[cx - dx] = static_cast<std::uint16_t>(step);
            if (cx + dx < width) row[cx + dx] = static_cast<std::uint16_t>(step);
        }
        bright_.emplace_back(bright == 0 ? cx : std::max(cx - bright + 1, 0),
                             std::min(cx + bright, width));
    }
}

VignetMap::RowDarkening VignetMap::Row(int y) const {
    assert(!IsTiny() && y >= 0 && y < height_);
    const auto distance = static_cast<std::size_t>(std::abs(height_ / 2 - y));
    return {bright_[distance].first, bright_[distance].second,
            factors_.data() + distance * static_cast<std::size_t>(width_)};
}

void Vignet(ConstPixels source, Pixels destination, const VignetMap& map, Scratch& scratch,
            Rows rows) {
    assert(AreAlike(source, destination));
    assert(map.IsOf(source.width, source.height));
    const Rows clipped = rows.ClippedTo(source.height);
    const auto width = static_cast<std::size_t>(source.width);
    Scratch::Scope scope(scratch);
    std::uint16_t* const spread = scope.Take<std::uint16_t>(3 * width).data();
    for (int first = clipped.first; first < clipped.last; first += kRowsTogether) {
        const int last = std::min(first + kRowsTogether, clipped.last);
        RunOverRows<ContrastBlock>(source, destination, first, last);
        for (int y = first; y < last; ++y) {
            if (map.IsTiny()) {
                map.DarkenTiny(y, destination.Row(y));
            } else {
                RunVectorised<DarkenRow>(destination.Row(y), width, map.Row(y), spread);
            }
        }
    }
}

void VignetMap::DarkenTiny(int y, std::uint8_t* row) const {
    assert(IsTiny() && y >= 0 && y < height_);
    const int dy = height_ / 2 - y;
    for (int x = 0; x < width_; ++x) {
        const int dx = x - width_ / 2;
        const int squared = dx * dx + dy * dy;
        if (squared <= geometry_.inner * geometry_.inner) continue;
        const double brightness = geometry_.Brightness(squared);
        for (int c = 0; c < 3; ++c) {
            const double value = row[3 * x + c] * brightness / geometry_.span;
            row[3 * x + c] = static_cast<std::uint8_t>(limit(value));
        }
    }
}

}  // namespace Kivo::Effects
