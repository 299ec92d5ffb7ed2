#include "tests/effects/plain/plain_blur.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Plain {

namespace {

int Clamp(int value, int highest) {
    return value < 0 ? 0 : value > highest ? highest : value;
}

/// One sample at the end of a line: level 9, with the weights that fall inside.
std::uint8_t EndSample(const std::uint8_t* source, int length, long bytes, int sample,
                       const std::vector<float>& matrix) {
    float sum = 0;
    float weights = 0;
    for (int j = 0; j < 19; ++j) {
        const int at = sample + j - 9;
        if (at < 0 || at >= length) continue;
        sum += matrix[j] * static_cast<float>(source[at * bytes]);
        weights += matrix[j];
    }
    return static_cast<std::uint8_t>(sum / weights + 0.5F);
}

int Graded(int length, int sample) {
    const int d = std::abs(length / 2 - sample);
    const int sharp = 3 * (length / 10);
    if (d < sharp) return 0;
    const int step = std::max((length / 2 - sharp) / 10, 1);
    return Clamp((d - sharp) / step, 9);
}

void BlurColumn(ConstPixels source, Pixels destination, int x, int level, const Levels& levels) {
    std::vector<std::uint8_t> column(static_cast<std::size_t>(source.height) * 3);
    std::vector<std::uint8_t> blurred(column.size());
    for (int y = 0; y < source.height; ++y) {
        for (int c = 0; c < 3; ++c) column[3 * y + c] = source.Row(y)[3 * x + c];
    }
    Blur(column.data(), blurred.data(), source.height, 3, level, levels);
    for (int y = 0; y < source.height; ++y) {
        for (int c = 0; c < 3; ++c) destination.Row(y)[3 * x + c] = blurred[3 * y + c];
    }
}

}  // namespace

std::vector<float> ConvolveMatrix(float radius) {
    const float sigma = static_cast<float>(0.25 + 0.5 * std::abs(radius));
    const float reach = sigma + sigma;
    const int length = std::max(static_cast<int>(2 * std::ceil(reach - 0.5) + 1), 1);
    const int half = length / 2;
    const float product = reach * sigma;
    std::vector<float> matrix(length);
    for (int i = half + 1; i < length; ++i) {
        const float base = static_cast<float>(i) - std::floor(static_cast<float>(half)) - 0.5F;
        double sum = 0;
        for (int j = 1; j <= 50; ++j) {
            const double x = base + 0.02 * j;
            if (x <= reach) sum += std::exp(-(x * x) / product);
        }
        matrix[i] = static_cast<float>(sum / 50);
    }
    for (int i = 0; i < half; ++i) matrix[i] = matrix[length - 1 - i];
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

std::vector<float> LookupTable(const std::vector<float>& matrix) {
    std::vector<float> table(matrix.size() * 256);
    for (std::size_t i = 0; i < matrix.size(); ++i) {
        for (int v = 0; v < 256; ++v) table[i * 256 + v] = matrix[i] * static_cast<float>(v);
    }
    return table;
}

Levels::Levels() {
    for (int i = 0; i < 10; ++i) {
        matrix[i] = ConvolveMatrix(static_cast<float>(i));
        table[i] = LookupTable(matrix[i]);
    }
}

void Blur(const std::uint8_t* source, std::uint8_t* destination, int length, long bytes, int level,
          const Levels& levels) {
    for (long byte = 0; byte < bytes; ++byte) {
        for (int s = 0; s < length; ++s) {
            if (length < 19 || s < 9 || s >= length - 9) {
                destination[s * bytes + byte] =
                    EndSample(source + byte, length, bytes, s, levels.matrix[9]);
                continue;
            }
            const int l = level == -1 ? Graded(length, s) : level;
            const float* table = levels.table[l].data();
            const int taps = static_cast<int>(levels.matrix[l].size());
            float sum = 0;
            for (int k = 0; k < taps; ++k) {
                sum += table[k * 256 + source[(s - 9 + k) * bytes + byte]];
            }
            destination[s * bytes + byte] = static_cast<std::uint8_t>(sum + 0.5F);
        }
    }
}

void TiltShift(ConstPixels source, Pixels destination, const Levels& levels) {
    const int width = source.width;
    const int height = source.height;
    std::uint8_t a[256];
    std::uint8_t b[256];
    for (int v = 0; v < 256; ++v) {
        const auto value = static_cast<float>(v);
        a[v] = static_cast<std::uint8_t>(
            Clamp(static_cast<int>((150.0F * value - 19200.0F) / 100.0F + 153.5F), 255));
        b[v] = static_cast<std::uint8_t>(
            Clamp(static_cast<int>((120.0F * value - 15360.0F) / 100.0F + 128.5F), 255));
    }
    std::vector<std::uint8_t> toned(source.SizeBytes());
    std::vector<std::uint8_t> rows(source.SizeBytes());
    for (std::size_t i = 0; i < toned.size(); i += 3) {
        toned[i] = b[source.data[i]];
        toned[i + 1] = b[a[source.data[i + 1]]];
        toned[i + 2] = b[a[source.data[i + 2]]];
    }
    const Pixels tonedView{toned.data(), width, height};
    const Pixels rowsView{rows.data(), width, height};
    const int step = std::max(height / 30, 1);
    for (int y = 0; y < height; ++y) {
        int level = 0;
        if (y < height / 3) {
            level = 9 - y / step;
        } else if (y > height / 3 * 2) {
            level = 9 - (height - y) / step;
        }
        Blur(tonedView.Row(y), rowsView.Row(y), width, 3, Clamp(level, 9), levels);
    }
    for (int x = 0; x < width; ++x) BlurColumn(rowsView, destination, x, -1, levels);
}

void OutFocus(ConstPixels source, Pixels destination, const Levels& levels) {
    std::vector<std::uint8_t> rows(source.SizeBytes());
    const Pixels rowsView{rows.data(), source.width, source.height};
    for (int y = 0; y < source.height; ++y) {
        Blur(source.Row(y), rowsView.Row(y), source.width, 3, -1, levels);
    }
    for (int x = 0; x < source.width; ++x) BlurColumn(rowsView, destination, x, -1, levels);
}

void HDR(ConstPixels source, Pixels destination, const Levels& levels) {
    std::vector<std::uint8_t> mask(source.SizeBytes());
    std::vector<std::uint8_t> rows(source.SizeBytes());
    for (std::size_t i = 0; i < mask.size(); i += 3) {
        const std::uint8_t* in = source.data + i;
        const int lum = static_cast<int>(in[1] * 0.7154 + in[0] * 0.2125 + in[2] * 0.0721);
        mask[i] = mask[i + 1] = mask[i + 2] = static_cast<std::uint8_t>(255 - lum);
    }
    const Pixels maskView{mask.data(), source.width, source.height};
    const Pixels rowsView{rows.data(), source.width, source.height};
    for (int y = 0; y < source.height; ++y) {
        Blur(maskView.Row(y), rowsView.Row(y), source.width, 3, 9, levels);
    }
    for (int x = 0; x < source.width; ++x) BlurColumn(rowsView, maskView, x, 9, levels);
    for (std::size_t i = 0; i < mask.size(); ++i) {
        const float combined =
            static_cast<float>(mask[i]) * 0.2F + static_cast<float>(source.data[i]) * 0.8F;
        const int c = Clamp(static_cast<int>(combined), 255);
        destination.data[i] = static_cast<std::uint8_t>(Clamp(c + (10 * c - 1280) / 100, 255));
    }
}

}  // namespace Plain
