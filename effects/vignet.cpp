#include "vignet.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "channel_blocks.h"
#include "limit.h"

namespace Kivo::Effects {

namespace {

constexpr double kDarkest = 30.0;

// Units of 1 / 65536, rounded up: 70, 40 and 50 percent of every distance from 128.
constexpr ChannelPattern<std::uint16_t> kContrast{45876, 26215, 32768};

struct ContrastBlock {
    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out) {
        for (std::size_t at = 0; at < kBlockBytes; at += kPatternBytes) {
            for (std::size_t i = 0; i < kPatternBytes; ++i) {
                const auto offset = static_cast<std::int16_t>(in[at + i] - 128);
                const auto distance = static_cast<std::uint16_t>(std::abs(offset));
                const auto raise =
                    static_cast<std::uint16_t>((std::uint32_t{distance} * kContrast[i]) >> 16);
                const auto raised = static_cast<std::int16_t>(distance + raise);
                const auto value = static_cast<std::int16_t>(128 + (offset < 0 ? -raised : raised));
                out[at + i] = static_cast<std::uint8_t>(
                    std::min<std::int16_t>(std::max<std::int16_t>(value, 0), 255));
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

struct VignetRow {
    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out, std::size_t width,
                         VignetMap::RowDarkening row, std::uint16_t* spread) {
        EveryBlock<ContrastBlock>::Run(in, out, 3 * width);
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
    const auto distance = static_cast<std::size_t>(std::abs(height_ / 2 - y));
    return {bright_[distance].first, bright_[distance].second,
            factors_.data() + distance * static_cast<std::size_t>(width_)};
}

void Vignet(ConstPixels source, Pixels destination, const VignetMap& map, Scratch& scratch,
            Rows rows) {
    const Rows clipped = rows.ClippedTo(source.height);
    const auto width = static_cast<std::size_t>(source.width);
    Scratch::Scope scope(scratch);
    std::uint16_t* const spread = scope.Take<std::uint16_t>(3 * width).data();
    for (int y = clipped.first; y < clipped.last; ++y) {
        if (map.IsTiny()) {
            RunVectorised<EveryBlock<ContrastBlock>>(source.Row(y), destination.Row(y), 3 * width);
            map.DarkenTiny(y, destination.Row(y));
        } else {
            RunVectorised<VignetRow>(source.Row(y), destination.Row(y), width, map.Row(y), spread);
        }
    }
}

void VignetMap::DarkenTiny(int y, std::uint8_t* row) const {
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
