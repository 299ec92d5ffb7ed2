// Fisheye and concave: a radial remapping without interpolation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "pixels.h"

namespace Kivo::Effects {

/// Where each pixel of a picture of one size comes from. Building one costs several times what
/// applying it does; EffectTables keeps them.
class CircularMap {
  public:
    CircularMap(int width, int height, bool concave);

    int Width() const { return width_; }
    int Height() const { return height_; }

    /// Byte offset of the source pixel of (x, y) at [x + width * y]; kOutside where it lies outside
    /// the picture.
    static constexpr std::int32_t kOutside = -1;
    const std::int32_t* Row(int y) const { return offsets_.data() + std::ptrdiff_t{width_} * y; }

  private:
    int width_;
    int height_;
    std::vector<std::int32_t> offsets_;
};

/// `map` is of the picture's size; pixels that come from outside are black. Reads all of the
/// source, so all of it has to be there before the first band.
void Circular(ConstPixels source, Pixels destination, const CircularMap& map, Rows rows = {});

}  // namespace Kivo::Effects
