#include "circular.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

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

    double radius_;
    double norm_;
    bool isConcave_;
};

/// The three bytes of a pixel, and one of the next; the last pixel of the picture has no next one.
inline std::uint32_t ColourAt(const std::uint8_t* bytes, std::int32_t offset,
                              std::int32_t lastReadable) {
    std::uint32_t colour = 0;
    if (offset >= 0 && offset <= lastReadable) [[likely]] {
        std::memcpy(&colour, bytes + offset, 4);
    } else if (offset != CircularMap::kOutside) {
        std::memcpy(&colour, bytes + offset, 3);
    }
    return colour;
}

}  // namespace

CircularMap::CircularMap(int width, int height, bool concave)
    : width_(width),
      height_(height),
      offsets_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
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
}

void Circular(ConstPixels source, Pixels destination, const CircularMap& map, Rows rows) {
    const Rows clipped = rows.ClippedTo(source.height);
    const int width = source.width;
    const auto lastReadable = static_cast<std::int32_t>(source.SizeBytes()) - 4;
    for (int y = clipped.first; y < clipped.last; ++y) {
        const std::int32_t* const offsets = map.Row(y);
        std::uint8_t* const out = destination.Row(y);
        // Four bytes a pixel, the fourth being overwritten by the next one; three for the last.
        for (int x = 0; x + 1 < width; ++x) {
            const std::uint32_t colour = ColourAt(source.data, offsets[x], lastReadable);
            std::memcpy(out + 3 * x, &colour, 4);
        }
        const std::uint32_t colour = ColourAt(source.data, offsets[width - 1], lastReadable);
        std::memcpy(out + 3 * (width - 1), &colour, 3);
    }
}

}  // namespace Kivo::Effects
