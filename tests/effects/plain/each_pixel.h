// The loop that all plain kernels share.
#pragma once

#include "effects/pixels/pixels.h"

namespace Plain {

using Byte = std::uint8_t;
using Kivo::Effects::ConstPixels;
using Kivo::Effects::Pixels;

/// Calls `make` with every pixel, the one to be made of it, and their place.
template <class Make>
void EachPixel(ConstPixels source, Pixels destination, Make make) {
    for (int y = 0; y < source.height; ++y) {
        for (int x = 0; x < source.width; ++x) {
            make(source.Row(y) + 3 * x, destination.Row(y) + 3 * x, x, y);
        }
    }
}

}  // namespace Plain
