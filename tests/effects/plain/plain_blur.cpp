#include "tests/effects/plain/plain_blur.h"

#include <algorithm>
#include <cmath>

namespace Plain {

namespace {

std::vector<float> ConvolveMatrix(float radius) {
    const float sigma = static_cast<float>(0.25 + 0.5 * std::abs(radius));
    const float reach = sigma + sigma;
    const int length = std::max(static_cast<int>(2 * std::ceil(reach - 0.5) + 1), 1);
    const int half = length / 2;
    const float product = reach * sigma;
    std::vector<float> matrix(length);
    for (int i = half + 1; i < length; ++i) {
        const float base = static_cast<float>(i - half) - 0.5F;
        double sum = 0;
        for (int j = 1; j <= 50; ++j) {
            const double x = base + 0.02 * j;
            if (x <= reach) sum += std::exp(-(x * x) / product);
        }
        matrix[i] = matrix[length - 1 - i] = static_cast<float>(sum / 50);
    }
    double centre = 0;
    for (int j = 0; j <= 50; ++j) {
        const double x = 0.5 + 0.02 * j;
        centre += std::exp(-(x * x) / product);
    }
    matrix[half] = static_cast<float>(centre / 51);
    double total = 0;
    for (const float entry : matrix) total += entry;
    for (float& entry : matrix) entry = static_cast<float>(entry / total);
    return matrix;
}

/// One sample at the end of a line: level 9, with the weights that fall inside.
Byte EndSample(const Byte* source, int length, long stride, int sample,
               const std::vector<float>& matrix) {
    float sum = 0;
    float weights = 0;
    for (int j = 0; j < 19; ++j) {
        const int at = sample + j - 9;
        if (at < 0 || at >= length) continue;
        sum += matrix[j] * static_cast<float>(source[at * stride]);
        weights += matrix[j];
    }
    return Byte(sum / weights + 0.5F);
}

int Graded(int length, int sample) {
    const int d = std::abs(length / 2 - sample);
    const int sharp = 3 * (length / 10);
    if (d < sharp) return 0;
    const int step = std::max((length / 2 - sharp) / 10, 1);
    return std::min((d - sharp) / step, 9);
}

/// One channel of a line whose samples are `stride` bytes apart.
void BlurChannel(const Byte* source, Byte* destination, int length, long stride, int level,
                 const Levels& levels) {
    for (int s = 0; s < length; ++s) {
        if (length < 19 || s < 9 || s >= length - 9) {
            destination[s * stride] = EndSample(source, length, stride, s, levels.matrix[9]);
            continue;
        }
        const int l = level == -1 ? Graded(length, s) : level;
        const int taps = static_cast<int>(levels.matrix[l].size());
        float sum = 0;
        for (int k = 0; k < taps; ++k) {
            sum += levels.table[l][k * 256 + source[(s - 9 + k) * stride]];
        }
        destination[s * stride] = Byte(sum + 0.5F);
    }
}

/// All rows at the level that `levelOfRow` names, and then all columns at one.
template <class LevelOfRow>
void BlurPicture(ConstPixels source, Pixels destination, LevelOfRow levelOfRow, int columnLevel,
                 const Levels& levels) {
    std::vector<Byte> rows(source.SizeBytes());
    const int rowBytes = 3 * source.width;
    for (int y = 0; y < source.height; ++y) {
        Blur(source.Row(y), &rows[y * rowBytes], source.width, 3, levelOfRow(y), levels);
    }
    for (int i = 0; i < rowBytes; ++i) {
        BlurChannel(&rows[i], destination.data + i, source.height, rowBytes, columnLevel, levels);
    }
}

}  // namespace

Levels::Levels() {
    for (int i = 0; i < 10; ++i) {
        matrix[i] = ConvolveMatrix(static_cast<float>(i));
        for (const float weight : matrix[i]) {
            for (int v = 0; v < 256; ++v) table[i].push_back(weight * static_cast<float>(v));
        }
    }
}

void Blur(const Byte* source, Byte* destination, int length, long bytes, int level,
          const Levels& levels) {
    for (long byte = 0; byte < bytes; ++byte) {
        BlurChannel(source + byte, destination + byte, length, bytes, level, levels);
    }
}

void TiltShift(ConstPixels source, Pixels destination, const Levels& levels) {
    const auto tone = [](float contrast, float brightness) {
        return [=](Byte value) {
            const float toned = contrast * (static_cast<float>(value) - 128.0F) / 100.0F;
            return Byte(std::clamp(static_cast<int>(toned + brightness), 0, 255));
        };
    };
    const auto a = tone(150.0F, 153.5F);
    const auto b = tone(120.0F, 128.5F);
    std::vector<Byte> toned(source.SizeBytes());
    const Pixels tonedView{toned.data(), source.width, source.height};
    EachPixel(source, tonedView, [&](const Byte* in, Byte* out, int, int) {
        out[0] = b(in[0]);
        out[1] = b(a(in[1]));
        out[2] = b(a(in[2]));
    });
    const int height = source.height;
    const auto levelOfRow = [height](int y) {
        const int step = std::max(height / 30, 1);
        const int distance = y < height / 3 ? y : y > height / 3 * 2 ? height - y : 9 * step;
        return std::clamp(9 - distance / step, 0, 9);
    };
    BlurPicture(tonedView, destination, levelOfRow, -1, levels);
}

void OutFocus(ConstPixels source, Pixels destination, const Levels& levels) {
    BlurPicture(
        source, destination, [](int) { return -1; }, -1, levels);
}

void HDR(ConstPixels source, Pixels destination, const Levels& levels) {
    std::vector<Byte> mask(source.SizeBytes());
    const Pixels maskView{mask.data(), source.width, source.height};
    EachPixel(source, maskView, [](const Byte* in, Byte* out, int, int) {
        const int lum = static_cast<int>(in[1] * 0.7154 + in[0] * 0.2125 + in[2] * 0.0721);
        out[0] = out[1] = out[2] = Byte(255 - lum);
    });
    BlurPicture(
        maskView, maskView, [](int) { return 9; }, 9, levels);
    for (std::size_t i = 0; i < mask.size(); ++i) {
        const float combined =
            static_cast<float>(mask[i]) * 0.2F + static_cast<float>(source.data[i]) * 0.8F;
        const int c = std::clamp(static_cast<int>(combined), 0, 255);
        destination.data[i] = Byte(std::clamp(c + (10 * c - 1280) / 100, 0, 255));
    }
}

}  // namespace Plain
