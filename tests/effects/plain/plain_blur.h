// Plain reference kernels: the line blur and everything built from it.
#pragma once

#include <cstdint>
#include <vector>

#include "effects/pixels/pixels.h"

namespace Plain {

using Kivo::Effects::ConstPixels;
using Kivo::Effects::Pixels;

std::vector<float> ConvolveMatrix(float radius);
std::vector<float> LookupTable(const std::vector<float>& matrix);

/// The tables of the ten levels.
struct Levels {
    Levels();
    std::vector<float> matrix[10];
    std::vector<float> table[10];
};

void Blur(const std::uint8_t* source, std::uint8_t* destination, int length, long bytes, int level,
          const Levels& levels);
void TiltShift(ConstPixels source, Pixels destination, const Levels& levels);
void OutFocus(ConstPixels source, Pixels destination, const Levels& levels);
void HDR(ConstPixels source, Pixels destination, const Levels& levels);

}  // namespace Plain
