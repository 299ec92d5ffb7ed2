// Plain reference kernels: the line blur and everything built from it.
#pragma once

#include <vector>

#include "tests/effects/plain/each_pixel.h"

namespace Plain {

/// The tables of the ten levels.
struct Levels {
    Levels();
    std::vector<float> matrix[10];
    std::vector<float> table[10];
};

void Blur(const Byte* source, Byte* destination, int length, long bytes, int level,
          const Levels& levels);
void TiltShift(ConstPixels source, Pixels destination, const Levels& levels);
void OutFocus(ConstPixels source, Pixels destination, const Levels& levels);
void HDR(ConstPixels source, Pixels destination, const Levels& levels);

}  // namespace Plain
