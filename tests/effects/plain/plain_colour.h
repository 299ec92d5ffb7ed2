// Plain reference kernels: colour, tone and geometry, one obvious loop each.
#pragma once

#include "tests/effects/plain/each_pixel.h"

namespace Plain {

float Hue2Rgb(float m1, float m2, float h);

void BW(ConstPixels source, Pixels destination);
void Sepia(ConstPixels source, Pixels destination);
void Negative(ConstPixels source, Pixels destination);
void Colorize(ConstPixels source, Pixels destination, int hue, int saturation, float opacity);
void Edge(ConstPixels source, Pixels destination);
void Circular(ConstPixels source, Pixels destination, bool concave);
void Vignet(ConstPixels source, Pixels destination, bool wide);
void Mix(ConstPixels first, ConstPixels source, Pixels destination);
void Mirror(ConstPixels source, Pixels destination, bool vertical);
void QShrink(ConstPixels source, Pixels destination);

}  // namespace Plain
