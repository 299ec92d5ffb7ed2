// The KIVO look: more contrast, and a border that darkens outwards.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "effects/pixels/pixels.h"
#include "effects/pixels/scratch.h"

namespace Kivo::Effects {

/// The darkening of a picture of one size; EffectTables keeps them.
class VignetMap {
  public:
    /// `wide` starts the darkening farther from the centre.
    VignetMap(int width, int height, bool wide);

    /// The darkening of one row: pixels [first, last) keep their brightness; all others are
    /// multiplied by factors[x] / 65536.
    struct RowDarkening {
        int first;
        int last;
        const std::uint16_t* factors;  // owned by the map, valid outside [first, last)
    };
    RowDarkening Row(int y) const;

    bool IsOf(int width, int height) const { return width == width_ && height == height_; }

    /// Pictures so small that even the border brightens; they have no factors.
    bool IsTiny() const { return geometry_.span <= 30; }
    /// Applies the border to row `y` of a tiny picture, in place.
    void DarkenTiny(int y, std::uint8_t* row) const;

  private:
    struct Geometry {
        Geometry(int width, bool wide);
        /// Never below the darkest, in the unit of `span`.
        double Brightness(int squaredDistance) const;
        int radius;
        int inner;  // up to this distance from the centre nothing darkens
        int span;   // the distance over which brightness would fall to nothing
    };

    int width_;
    int height_;
    Geometry geometry_;
    std::vector<std::uint16_t> factors_;  // one row for each distance from the middle row
    std::vector<std::pair<int, int>> bright_;
};

/// `map` is of the picture's size.
void Vignet(ConstPixels source, Pixels destination, const VignetMap& map, Scratch& scratch,
            Rows rows = {});

}  // namespace Kivo::Effects
