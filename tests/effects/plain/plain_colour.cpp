#include "tests/effects/plain/plain_colour.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace Plain {

namespace {

int Clamp(int value) {
    return value < 0 ? 0 : value > 255 ? 255 : value;
}

double Clamp(double value) {
    return value < 0.0 ? 0.0 : value > 255.0 ? 255.0 : value;
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
    for (int y = 0; y < source.height; ++y) {
        for (int x = 0; x < source.width; ++x) {
            const std::uint8_t* in = source.Row(y) + 3 * x;
            std::uint8_t* out = destination.Row(y) + 3 * x;
            const auto r = static_cast<std::uint8_t>(in[0] * 0.2125);
            const auto g = static_cast<std::uint8_t>(in[1] * 0.7154);
            const auto b = static_cast<std::uint8_t>(in[2] * 0.0721);
            out[0] = out[1] = out[2] = static_cast<std::uint8_t>(r + g + b);
        }
    }
}

void Sepia(ConstPixels source, Pixels destination) {
    for (int y = 0; y < source.height; ++y) {
        for (int x = 0; x < source.width; ++x) {
            const std::uint8_t* in = source.Row(y) + 3 * x;
            std::uint8_t* out = destination.Row(y) + 3 * x;
            const int lum = static_cast<int>(in[1] * 0.587 + in[0] * 0.299 + in[2] * 0.114);
            out[0] = static_cast<std::uint8_t>(lum <= 206 ? lum + 49 : 255);
            out[1] = static_cast<std::uint8_t>(lum >= 14 ? lum - 14 : 0);
            out[2] = static_cast<std::uint8_t>(lum >= 56 ? lum - 56 : 0);
        }
    }
}

void Negative(ConstPixels source, Pixels destination) {
    for (std::size_t i = 0; i < source.SizeBytes(); ++i) {
        destination.data[i] = static_cast<std::uint8_t>(255 - source.data[i]);
    }
}

void Colorize(ConstPixels source, Pixels destination, int hue, int saturation, float opacity) {
    if (opacity < 0.0F) opacity = 0.0F;
    if (opacity > 1.0F) opacity = 1.0F;
    const int a = static_cast<int>(opacity * 256.0F);
    const int keep = 256 - a;
    for (int y = 0; y < source.height; ++y) {
        for (int x = 0; x < source.width; ++x) {
            const std::uint8_t* in = source.Row(y) + 3 * x;
            std::uint8_t* out = destination.Row(y) + 3 * x;
            const int lum = (306 * in[0] + 601 * in[1] + 117 * in[2]) >> 10;
            const float l = static_cast<float>(lum) / 255.0F;
            const float s = static_cast<float>(saturation) / 255.0F;
            std::uint8_t colour[3];
            if (s == 0.0F) {
                colour[0] = colour[1] = colour[2] = static_cast<std::uint8_t>(l * 255.0F);
            } else {
                const float m2 = l <= 0.5F ? l + s * l : l + s - l * s;
                const float m1 = 2.0F * l - m2;
                const float h = static_cast<float>(hue) * 360.0F / 255.0F;
                colour[0] = static_cast<std::uint8_t>(Hue2Rgb(m1, m2, h + 120.0F) * 255.0F);
                colour[1] = static_cast<std::uint8_t>(Hue2Rgb(m1, m2, h) * 255.0F);
                colour[2] = static_cast<std::uint8_t>(Hue2Rgb(m1, m2, h - 120.0F) * 255.0F);
            }
            for (int c = 0; c < 3; ++c) {
                out[c] = static_cast<std::uint8_t>((in[c] * keep + colour[c] * a) >> 8);
            }
        }
    }
}

void Edge(ConstPixels source, Pixels destination) {
    for (int y = 0; y < source.height; ++y) {
        for (int x = 0; x < source.width; ++x) {
            int highest[3] = {0, 0, 0};
            int lowest[3] = {255, 255, 255};
            for (int i = -1; i <= 1; ++i) {
                for (int j = -1; j <= 1; ++j) {
                    if (x + i < 0 || x + i >= source.width) continue;
                    if (y + j < 0 || y + j >= source.height) continue;
                    const std::uint8_t* in = source.Row(y + j) + 3 * (x + i);
                    for (int c = 0; c < 3; ++c) {
                        if (in[c] > highest[c]) highest[c] = in[c];
                        if (in[c] < lowest[c]) lowest[c] = in[c];
                    }
                }
            }
            std::uint8_t* out = destination.Row(y) + 3 * x;
            for (int c = 0; c < 3; ++c) {
                out[c] = static_cast<std::uint8_t>(255 - std::abs(highest[c] - lowest[c]));
            }
        }
    }
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
    double theta = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double dx = x - cx;
            const double dy = y - cy;
            const double r = std::sqrt(dx * dx + dy * dy);
            std::uint8_t* out = destination.Row(y) + 3 * x;
            int sx = x;
            int sy = y;
            if (r <= radius) {
                if (dx > 0) {
                    theta = std::atan(dy / dx);
                } else if (dx < 0 && dy >= 0) {
                    theta = std::atan(dy / dx) + pi;
                } else if (dx < 0) {
                    theta = std::atan(dy / dx) - pi;
                } else if (dy > 0) {
                    theta = pi / 2;
                } else if (dy < 0) {
                    theta = -pi / 2;
                }
                // A picture less than two pixels wide or high has radius 0 and no norm; its one
                // remapped pixel is the centre, which maps to itself.
                const double mapped = r == 0    ? 0
                                      : concave ? std::log(1 + k * r) * norm
                                                : (std::exp(r / norm) - 1) / k;
                sx = static_cast<int>(mapped * std::cos(theta)) + cx;
                sy = static_cast<int>(mapped * std::sin(theta)) + cy;
            }
            const bool outside = sx < 0 || sy < 0 || sx >= width || sy >= height;
            for (int c = 0; c < 3; ++c) out[c] = outside ? 0 : source.Row(sy)[3 * sx + c];
        }
    }
}

void Vignet(ConstPixels source, Pixels destination, bool wide) {
    const int width = source.width;
    const int height = source.height;
    int radius = static_cast<int>(width * 0.75);
    if (!wide) radius = static_cast<int>(radius + radius * -0.2);
    const int inner = radius / 3;
    // The narrowest pictures would have a span of 0.
    const int span = std::max(radius + radius / -3, 1);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::uint8_t* in = source.Row(y) + 3 * x;
            std::uint8_t* out = destination.Row(y) + 3 * x;
            const int raised[3] = {Clamp(in[0] + (70 * in[0] - 8960) / 100),
                                   Clamp(in[1] + (40 * in[1] - 5120) / 100),
                                   Clamp(in[2] + (50 * in[2] - 6400) / 100)};
            const double dx = x - width / 2;
            const double dy = height / 2 - y;
            const double d = std::sqrt(dx * dx + dy * dy);
            double f = radius - d;
            if (f < 30.0) f = 30.0;
            for (int c = 0; c < 3; ++c) {
                out[c] =
                    static_cast<std::uint8_t>(d <= inner ? raised[c] : Clamp(raised[c] * f / span));
            }
        }
    }
}

void Mix(ConstPixels first, ConstPixels source, Pixels destination) {
    for (std::size_t i = 0; i < source.SizeBytes(); ++i) {
        const float mean = static_cast<float>(first.data[i] + source.data[i]) * 0.5F;
        destination.data[i] = static_cast<std::uint8_t>(mean > 255.0F ? 255.0F : mean);
    }
}

void Mirror(ConstPixels source, Pixels destination, bool vertical) {
    const int width = source.width;
    const int height = source.height;
    for (int y = 0; y < (vertical ? height / 2 : height); ++y) {
        for (int x = 0; x < (vertical ? width : width / 2); ++x) {
            const int otherX = vertical ? x : width - 1 - x;
            const int otherY = vertical ? height - 1 - y : y;
            for (int c = 0; c < 3; ++c) {
                const std::uint8_t value = source.Row(y)[3 * x + c];
                destination.Row(y)[3 * x + c] = value;
                destination.Row(otherY)[3 * otherX + c] = value;
            }
        }
    }
}

void QShrink(ConstPixels source, Pixels destination) {
    for (int y = 0; y + 1 < source.height; y += 2) {
        for (int x = 0; x + 1 < source.width; x += 2) {
            for (int c = 0; c < 3; ++c) {
                destination.data[3 * ((source.width / 2) * (y / 2) + x / 2) + c] =
                    source.Row(y)[3 * x + c];
            }
        }
    }
}

}  // namespace Plain
