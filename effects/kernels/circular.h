// Fisheye and concave: a radial remapping without interpolation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

/// Where each pixel of a picture of one size comes from. Building one costs several times what
/// applying it does; EffectTables keeps them.
class CircularMap {
  public:
    CircularMap(int width, int height, bool concave);

    /// What becomes of one row. Pixels outside [first, last) stay where they are; the others come
    /// from the byte offset offsets[x] of the source, or from outside the picture.
    struct RowPlan {
        int first;
        int last;
        bool isSafe;  // no offset is kOutside or so near to the end that four bytes cannot be read
        const std::int32_t* offsets;  // owned by the map
    };
    static constexpr std::int32_t kOutside = -1;
    RowPlan Row(int y) const;

    bool IsOf(int width, int height) const { return width == width_ && height == height_; }

  private:
    struct Span {
        int first;
        int last;
        bool isSafe;
    };
    Span FindSpan(int y) const;
    const std::int32_t* Offsets(int y) const {
        return offsets_.data() + std::ptrdiff_t{width_} * y;
    }

    int width_;
    int height_;
    std::vector<std::int32_t> offsets_;
    std::vector<Span> spans_;  // one for each row
};

/// `map` is of the picture's size; pixels that come from outside are black. Reads all of the
/// source, so all of it has to be there before the first band.
void Circular(ConstPixels source, Pixels destination, const CircularMap& map, Rows rows = {});

}  // namespace Kivo::Effects
