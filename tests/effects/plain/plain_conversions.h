// Plain reference of the conversions between files, previews and pictures.
#pragma once

#include "tests/effects/plain/each_pixel.h"

namespace Plain {

void ConvertPreview(const Byte* frame, Pixels converted);
/// `firstFrame` is blended in unless it is empty.
void EncodePreview(ConstPixels converted, ConstPixels firstFrame, Byte* frame);

/// Pixel by pixel, as the rows lie in a BMP.
void FromBmpRows(const Byte* rows, Pixels picture);
void ConvertToRgba(ConstPixels picture, bool turned, Byte* rgba);

}  // namespace Plain
