// Tools for drawing the built-in scenes, the same on every machine.
#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

#include <osp/graphics/dimension.h>
#include <osp/media/camera_selection.h>

#include "osp/graphics/surface.h"

/// Scenes are laid out in world units. Nothing here is random, and nothing calls a mathematical
/// function whose last bit differs between libraries. Any thread.
namespace Osp::Media::Scene {

/// Which part of the world a picture shows, and how large.
struct View {
    Graphics::Dimension size;  // of the upright picture
    double scale = 1;          // pixels a world unit
    double left = 0;           // world coordinates of the picture's corner
    double top = 0;
};

/// The middle of a world of the given size, whose shorter side fills the picture's at 1x.
View MakeView(const Graphics::Dimension& upright, const Graphics::Dimension& world, int zoomStep);

/// A context in world units for an upright picture, or for one as the front sensor delivers it.
Graphics::CairoPointer MakeContext(Graphics::Surface& surface, const View& view,
                                   CameraSelection mounting);

/// 0xRRGGBB.
using Color = std::uint32_t;

void SetColor(cairo_t* cr, Color color, double alpha = 1);
void Fill(cairo_t* cr, Color color, double alpha = 1);
void Stroke(cairo_t* cr, Color color, double width, double alpha = 1);

struct Place {
    double x;
    double y;
};
void AddPolygon(cairo_t* cr, std::initializer_list<Place> corners);
/// A Bezier curve from where the one before it ends.
struct Curve {
    Place leaving;  // handles
    Place arriving;
    Place end;
};
void AddOutline(cairo_t* cr, Place start, std::initializer_list<Curve> curves);
void AddEllipse(cairo_t* cr, Place centre, double radiusX, double radiusY);
/// A blade of grass, a strand or a ray: widest at the root, pointed at the tip, bent on the way.
void AddBlade(cairo_t* cr, Place root, Place tip, double bend, double width);

/// Capital letters and digits as strokes, `height` world units high, from the top left; returns the
/// width. Characters that are not drawn yet leave a gap.
double AddText(cairo_t* cr, Place topLeft, double height, std::string_view text);

constexpr std::uint32_t Hash(std::uint32_t value) {
    value ^= value >> 16;
    value *= 0x7FEB352DU;
    value ^= value >> 15;
    value *= 0x846CA68BU;
    return value ^ (value >> 16);
}

/// 0 to below 1, another for every index and seed.
constexpr double Scatter(int index, std::uint32_t seed) {
    return Hash(static_cast<std::uint32_t>(index) * 0x9E3779B9U + seed) / 4294967296.0;
}

constexpr float Mix(float a, float b, float share) {
    return a + (b - a) * share;
}

constexpr float Smooth(float from, float to, float value) {
    const float t = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3 - 2 * t);
}

/// Smooth random values between 0 and 1, one every `width` x `height` world units and blends of
/// them between. Read along a row: what all pixels of a row share is worked out once.
class Noise {
  public:
    Noise(const View& view, float width, float height, std::uint32_t seed);

    /// To be called before the values at height `y` are read.
    void MoveTo(float y);
    float At(float x) const {
        const float place = x * perUnitX_ - firstX_;
        const int column = static_cast<int>(place);
        const float fraction = place - static_cast<float>(column);
        const float* const left = &blended_[static_cast<std::size_t>(column)];
        return Mix(left[0], left[1], fraction * fraction * (3 - 2 * fraction));
    }

  private:
    void FillLattice(int row, std::vector<float>& values) const;

    float perUnitX_;
    float perUnitY_;
    float firstX_;  // a whole number: the lattice column of the first value
    std::uint32_t seed_;
    int row_ = INT_MIN;
    std::vector<float> above_;
    std::vector<float> below_;
    std::vector<float> blended_;
};

/// The sine of a number of turns, to a thousandth.
constexpr double Sine(double turns) {
    const double t =
        turns - static_cast<double>(static_cast<long long>(turns)) + (turns < 0 ? 1 : 0);
    const double half = t < 0.5 ? t : t - 0.5;
    const double p = half * (0.5 - half);
    const double value = 16 * p / (1.25 - 4 * p);
    return t < 0.5 ? value : -value;
}

/// Where in a cycle of `period` frames frame `number` is, 0 to below 1.
constexpr double Phase(long long number, int period) {
    return static_cast<double>(number % period) / period;
}

struct Rgb {
    float red;
    float green;
    float blue;
};

constexpr Rgb Mix(const Rgb& a, const Rgb& b, float share) {
    return {Mix(a.red, b.red, share), Mix(a.green, b.green, share), Mix(a.blue, b.blue, share)};
}

constexpr Rgb Lighten(const Rgb& color, float amount) {
    return {color.red + amount, color.green + amount, color.blue + amount};
}

inline void Put(std::uint8_t* pixel, const Rgb& color) {
    const auto round = [](float channel) {
        return static_cast<std::uint8_t>(std::clamp(channel, 0.0F, 255.0F) + 0.5F);
    };
    pixel[0] = round(color.blue);
    pixel[1] = round(color.green);
    pixel[2] = round(color.red);
    pixel[3] = 255;
}

/// A row of pixels by world coordinates.
struct Behind {
    const std::uint8_t* row;  // not owned
    const View& view;

    Rgb At(float x) const {
        const auto column = static_cast<std::ptrdiff_t>((x - view.left) * view.scale);
        const std::uint8_t* const pixel = row + column * 4;
        return {static_cast<float>(pixel[2]), static_cast<float>(pixel[1]),
                static_cast<float>(pixel[0])};
    }
};

/// Colours the pixels of an upright picture whose middles lie between two world heights.
/// makeRow(y, row) returns a function that gives the colour at x; `row` are the pixels so far.
template <class MakeRow>
void PaintRows(Graphics::Surface& surface, const View& view, double top, double bottom,
               const MakeRow& makeRow) {
    for (int row = 0; row < view.size.height; ++row) {
        const double y = view.top + (row + 0.5) / view.scale;
        if (y < top || y >= bottom) continue;
        std::uint8_t* pixel =
            surface.Data() + static_cast<std::ptrdiff_t>(row) * surface.StrideBytes();
        const auto colorAt = makeRow(static_cast<float>(y), Behind{pixel, view});
        for (int column = 0; column < view.size.width; ++column, pixel += 4) {
            Put(pixel, colorAt(static_cast<float>(view.left + (column + 0.5) / view.scale)));
        }
    }
    surface.MarkDirty();
}

}  // namespace Osp::Media::Scene
