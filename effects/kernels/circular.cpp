#include "effects/kernels/circular.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstring>
#include <numbers>

#include "effects/pixels/preconditions.h"

// A pixel of the result comes from the source pixel in the same direction from the centre, at
// another distance: polar coordinates, of which the source takes the truncated whole pixels.
// Truncation makes every last bit of a cosine count, and pictures must be the same everywhere. Yet
// angles are slow. Hence:
//
// - The direction is (dx, dy) / r, so mapped / r * dx is the same number as mapped * cos(angle) but
//   for a few roundings, which are far below kMargin. Only where the truncated results could
//   differ, within it of a whole number, are the angles asked, with the operations in the order
//   that defines the look. Truncation thus never rests on the short way.
// - One quarter, dx and dy from 0, serves the other three, because turning signs is exact: cosine
// is
//   even, sine and arc tangent are odd, and truncation is towards zero on either side. Only the
//   left half is its own case: its angle has pi added or subtracted, which rounds differently.
// - What lies beyond the radius stays where it is, and so does the centre, whose angle means
// nothing.
// - The offsets of a row are looked at once: what stays in place at its ends is copied as a whole,
//   and a row that reads nothing outside the picture or in its last bytes can move four bytes for
//   three. The map is worth keeping, since it costs more than its use.

namespace Kivo::Effects {

namespace {

/// How far, in whole pixels, the source lies from the centre for a destination pixel that lies
/// `dx` >= 0 and `dy` >= 0 from it; `left` for the half with negative dx, whose angle is rounded
/// differently.
struct Distances {
    int right;
    int down;
    int left;
    int downLeft;
};

class Remapping {
  public:
    Remapping(int width, int height, bool isConcave)
        : radius_((isConcave ? std::min(width, height) : std::max(width, height)) / 2),
          norm_(radius_ / std::log(1 + kBend * radius_)),
          isConcave_(isConcave) {}

    Distances Map(int dx, int dy) const {
        const double r = std::sqrt(double{1} * dx * dx + double{1} * dy * dy);
        if (r > radius_ || r == 0) return {dx, dy, dx, dy};
        const double mapped = Radius(r);
        // Without angles, which are slow. The angles' results differ by less than the margin, so
        // they are asked only where that may make another whole pixel.
        const double x = mapped / r * dx;
        const double y = mapped / r * dy;
        if (IsNearWhole(x) || IsNearWhole(y)) return MapByAngle(mapped, dx, dy);
        const auto right = static_cast<int>(x);
        const auto down = static_cast<int>(y);
        return {right, down, right, down};
    }

  private:
    static constexpr double kBend = 0.02F;  // the single-precision value
    static constexpr double kMargin = 1e-6;

    double Radius(double r) const {
        return isConcave_ ? std::log(1 + kBend * r) * norm_ : (std::exp(r / norm_) - 1) / kBend;
    }
    static bool IsNearWhole(double value) {
        return static_cast<int>(value - kMargin) != static_cast<int>(value + kMargin);
    }
    static Distances MapByAngle(double mapped, int dx, int dy) {
        const double angle =
            dx == 0 ? std::numbers::pi / 2 : std::atan(static_cast<double>(dy) / dx);
        return {static_cast<int>(mapped * std::cos(angle)),
                static_cast<int>(mapped * std::sin(angle)),
                -static_cast<int>(mapped * std::cos(std::numbers::pi - angle)),
                static_cast<int>(mapped * std::sin(std::numbers::pi - angle))};
    }

    int radius_;
    double norm_;
    bool isConcave_;
};

/// Pixels that are copied between two requests for memory that a later row wants.
constexpr int kPixelsAtOnce = 8;
/// How much later that row is.
constexpr int kRowsAhead = 4;

/// Four bytes a pixel, the fourth being overwritten by the next one; three for the last ones.
/// Processors do not foresee which memory such a row reads, but the row `ahead` tells.
void CopySafely(const std::uint8_t* source, const CircularMap::RowPlan& row,
                const CircularMap::RowPlan& ahead, std::uint8_t* out) {
    int x = row.first;
    for (; x + kPixelsAtOnce < row.last; x += kPixelsAtOnce) {
        __builtin_prefetch(source + ahead.offsets[x]);
        for (int i = x; i < x + kPixelsAtOnce; ++i) {
            std::memcpy(out + 3 * i, source + row.offsets[i], 4);
        }
    }
    for (; x < row.last; ++x) std::memcpy(out + 3 * x, source + row.offsets[x], 3);
}

void CopyWithCare(const std::uint8_t* source, const CircularMap::RowPlan& row, std::uint8_t* out) {
    constexpr std::uint8_t kBlack[3] = {};
    for (int x = row.first; x < row.last; ++x) {
        const std::int32_t offset = row.offsets[x];
        std::memcpy(out + 3 * x, offset == CircularMap::kOutside ? kBlack : source + offset, 3);
    }
}

}  // namespace

CircularMap::CircularMap(int width, int height, bool concave)
    : width_(width),
      height_(height),
      offsets_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
    assert(width > 0 && height > 0);
    const Remapping remapping(width, height, concave);
    const int cx = width / 2;
    const int cy = height / 2;
    const auto set = [&](int x, int y, int sx, int sy) {
        if (x < 0 || y < 0 || x >= width || y >= height) return;
        const bool outside = sx < 0 || sy < 0 || sx >= width || sy >= height;
        offsets_[static_cast<std::size_t>(x + std::ptrdiff_t{width} * y)] =
            outside ? kOutside : 3 * (sx + width * sy);
    };
    // The signs of dx and dy only turn signs of the results, exactly, so one quarter serves all.
    for (int dy = 0; dy <= cy; ++dy) {
        for (int dx = 0; dx <= cx; ++dx) {
            const auto [right, down, left, downLeft] = remapping.Map(dx, dy);
            set(cx + dx, cy + dy, cx + right, cy + down);
            set(cx + dx, cy - dy, cx + right, cy - down);
            if (dx == 0) continue;
            set(cx - dx, cy + dy, cx - left, cy + downLeft);
            set(cx - dx, cy - dy, cx - left, cy - downLeft);
        }
    }
    for (int y = 0; y < height; ++y) spans_.push_back(FindSpan(y));
}

CircularMap::Span CircularMap::FindSpan(int y) const {
    const std::int32_t* const offsets = Offsets(y);
    const std::int32_t own = 3 * width_ * y;
    const std::int32_t lastSafe = 3 * width_ * height_ - 4;
    Span span{0, width_, true};
    while (span.first < width_ && offsets[span.first] == own + 3 * span.first) ++span.first;
    while (span.last > span.first && offsets[span.last - 1] == own + 3 * (span.last - 1)) {
        --span.last;
    }
    for (int x = span.first; x < span.last; ++x) {
        span.isSafe = span.isSafe && offsets[x] != kOutside && offsets[x] <= lastSafe;
    }
    return span;
}

CircularMap::RowPlan CircularMap::Row(int y) const {
    assert(y >= 0 && y < height_);
    const auto [first, last, isSafe] = spans_[static_cast<std::size_t>(y)];
    return {first, last, isSafe, Offsets(y)};
}

void Circular(ConstPixels source, Pixels destination, const CircularMap& map, Rows rows) {
    assert(AreAlikeAndApart(source, destination));
    assert(map.IsOf(source.width, source.height));
    const Rows clipped = rows.ClippedTo(source.height);
    for (int y = clipped.first; y < clipped.last; ++y) {
        const CircularMap::RowPlan row = map.Row(y);
        const std::uint8_t* const in = source.Row(y);
        std::uint8_t* const out = destination.Row(y);
        if (row.isSafe) {
            const int ahead = std::min(y + kRowsAhead, source.height - 1);
            CopySafely(source.data, row, map.Row(ahead), out);
        } else {
            CopyWithCare(source.data, row, out);
        }
        std::copy_n(in, 3 * row.first, out);
        std::copy(in + 3 * row.last, in + source.StrideBytes(), out + 3 * row.last);
    }
}

}  // namespace Kivo::Effects
