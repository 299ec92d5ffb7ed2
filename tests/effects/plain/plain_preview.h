// Plain reference of the preview conversions, with tables as a small processor would use them.
#pragma once

#include <cstdint>

#include "effects/pixels/pixels.h"

namespace Plain {

void ConvertPreview(const std::uint8_t* frame, Kivo::Effects::Pixels converted);
void EncodePreview(Kivo::Effects::ConstPixels converted, Kivo::Effects::ConstPixels firstFrame,
                   std::uint8_t* frame);

}  // namespace Plain
