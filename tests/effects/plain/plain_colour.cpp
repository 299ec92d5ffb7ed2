#include "tests/effects/plain/plain_colour.h"

#include <algorithm>
#include <cmath>

namespace Plain {

namespace {

template <class T>
Byte Clamp(T value) {
    return static_cast<Byte>(std::clamp(value, T{0}, T{255}));
}

}  // namespace

float Hue2Rgb(float m1, float m2, float h) {
    if (h > 360.0F) {
        h -= 360.0F;
    } else if (h < 0.0F) {
        h += 360.0F;
    }
    if (h < 60.0F) return m1 + (m2 - m1) * h / 60.0F;
    if (h < 180.0F) return m2;
    if (h < 240.0F) return m1 + (m2 - m1) * (240.0F - h) / 60.0F;
    return m1;
}

void BW(ConstPixels source, Pixels destination) {
    EachPixel(source, destination, [](const Byte* in, Byte* out, int, int) {
        const int sum = Byte(in[0] * 0.2125) + Byte(in[1] * 0.7154) + Byte(in[2] * 0.0721);
        out[0] = out[1] = out[2] = Byte(sum);
    });
}

void Sepia(ConstPixels source, Pixels destination) {
    EachPixel(source, destination, [](const Byte* in, Byte* out, int, int) {
        const int lum = static_cast<int>(in[1] * 0.587 + in[0] * 0.299 + in[2] * 0.114);
        out[0] = Clamp(lum + 49);
        out[1] = Clamp(lum - 14);
        out[2] = Clamp(lum - 56);
    });
}

void Negative(ConstPixels source, Pixels destination) {
    std::transform(source.data, source.data + source.SizeBytes(), destination.data,
                   [](Byte value) { return Byte(255 - value); });
}

void Colorize(ConstPixels source, Pixels destination, int hue, int saturation, float opacity) {
    const int a = static_cast<int>(std::clamp(opacity, 0.0F, 1.0F) * 256.0F);
    const float s = static_cast<float>(saturation) / 255.0F;
    const float h = static_cast<float>(hue) * 360.0F / 255.0F;
    EachPixel(source, destination, [=](const Byte* in, Byte* out, int, int) {
        const int lum = (306 * in[0] + 601 * in[1] + 117 * in[2]) >> 10;
        const float l = static_cast<float>(lum) / 255.0F;
        const float m2 = l <= 0.5F ? l + s * l : l + s - l * s;
        const float m1 = 2.0F * l - m2;
        for (int c = 0; c < 3; ++c) {
            const float turn = 120.0F * static_cast<float>(1 - c);
            const Byte colour = Byte(Hue2Rgb(m1, m2, h + turn) * 255.0F);
            out[c] = Byte((in[c] * (256 - a) + colour * a) >> 8);
        }
    });
}

void Edge(ConstPixels source, Pixels destination) {
    EachPixel(source, destination, [&](const Byte*, Byte* out, int x, int y) {
        for (int c = 0; c < 3; ++c) {
            Byte highest = 0;
            Byte lowest = 255;
            for (int j = std::max(y - 1, 0); j <= std::min(y + 1, source.height - 1); ++j) {
                for (int i = std::max(x - 1, 0); i <= std::min(x + 1, source.width - 1); ++i) {
                    highest = std::max(highest, source.Row(j)[3 * i + c]);
                    lowest = std::min(lowest, source.Row(j)[3 * i + c]);
                }
            }
            out[c] = Byte(255 - (highest - lowest));
        }
    });
}

void Circular(ConstPixels source, Pixels destination, bool concave) {
    const double pi = std::acos(-1.0);
    const int width = source.width;
    const int height = source.height;
    const int cx = width / 2;
    const int cy = height / 2;
    const double radius = concave ? std::min(width, height) / 2 : std::max(width, height) / 2;
    const double k = 0.02F;
    const double norm = radius / std::log(1 + k * radius);
    EachPixel(source, destination, [=](const Byte* in, Byte* out, int x, int y) {
        const double dx = x - cx;
        const double dy = y - cy;
        const double r = std::sqrt(dx * dx + dy * dy);
        // A picture less than two pixels wide or high has radius 0 and no norm; its one remapped
        // pixel is the centre, which stays where it is.
        if (r > radius || r == 0) {
            std::copy_n(in, 3, out);
            return;
        }
        const double theta = dx > 0    ? std::atan(dy / dx)
                             : dx == 0 ? (dy > 0 ? pi / 2 : -pi / 2)
                             : dy >= 0 ? std::atan(dy / dx) + pi
                                       : std::atan(dy / dx) - pi;
        const double mapped = concave ? std::log(1 + k * r) * norm : (std::exp(r / norm) - 1) / k;
        const int sx = static_cast<int>(mapped * std::cos(theta)) + cx;
        const int sy = static_cast<int>(mapped * std::sin(theta)) + cy;
        const bool outside = sx < 0 || sy < 0 || sx >= width || sy >= height;
        for (int c = 0; c < 3; ++c) out[c] = outside ? 0 : source.Row(sy)[3 * sx + c];
    });
}

void Vignet(ConstPixels source, Pixels destination, bool wide) {
    const int width = source.width;
    const int height = source.height;
    int radius = static_cast<int>(width * 0.75);
    if (!wide) radius = static_cast<int>(radius + radius * -0.2);
    // The narrowest pictures would have a span of 0.
    const int span = std::max(radius + radius / -3, 1);
    EachPixel(source, destination, [=](const Byte* in, Byte* out, int x, int y) {
        const Byte raised[3] = {Clamp(in[0] + (70 * in[0] - 8960) / 100),
                                Clamp(in[1] + (40 * in[1] - 5120) / 100),
                                Clamp(in[2] + (50 * in[2] - 6400) / 100)};
        const double dx = x - width / 2;
        const double dy = height / 2 - y;
        const double d = std::sqrt(dx * dx + dy * dy);
        const double f = std::max(radius - d, 30.0);
        for (int c = 0; c < 3; ++c) {
            out[c] = d <= radius / 3 ? raised[c] : Clamp(raised[c] * f / span);
        }
    });
}

void Mix(ConstPixels first, ConstPixels source, Pixels destination) {
    for (std::size_t i = 0; i < source.SizeBytes(); ++i) {
        destination.data[i] = Byte(static_cast<float>(first.data[i] + source.data[i]) * 0.5F);
    }
}

void Mirror(ConstPixels source, Pixels destination, bool vertical) {
    const int width = source.width;
    const int height = source.height;
    for (int y = 0; y < (vertical ? height / 2 : height); ++y) {
        for (int x = 0; x < (vertical ? width : width / 2); ++x) {
            const Byte* in = source.Row(y) + 3 * x;
            std::copy_n(in, 3, destination.Row(y) + 3 * x);
            std::copy_n(in, 3,
                        vertical ? destination.Row(height - 1 - y) + 3 * x
                                 : destination.Row(y) + 3 * (width - 1 - x));
        }
    }
}

void QShrink(ConstPixels source, Pixels destination) {
    for (int y = 0; y < source.height / 2; ++y) {
        for (int x = 0; x < source.width / 2; ++x) {
            std::copy_n(source.Row(2 * y) + 6 * x, 3,
                        destination.data + 3 * (source.width / 2 * y + x));
        }
    }
}

}  // namespace Plain
