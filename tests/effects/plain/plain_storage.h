// Plain reference of the conversions between files and pictures.
#pragma once

#include <cstdint>

#include "effects/pixels/pixels.h"

namespace Plain {

/// Pixel by pixel, as the rows lie in a BMP.
void FromBmpRows(const std::uint8_t* rows, Kivo::Effects::Pixels picture);
void ConvertToRgba(Kivo::Effects::ConstPixels picture, bool turned, std::uint8_t* rgba);

}  // namespace Plain
