#include "tests/effects/plain/plain_conversions.h"

#include <algorithm>
#include <vector>

namespace Plain {

namespace {

Byte Clamp(int value) {
    return Byte(std::clamp(value, 0, 255));
}

}  // namespace

void ConvertPreview(const Byte* frame, Pixels converted) {
    const int w = converted.width;
    const int h = converted.height;
    EachPixel(converted, converted, [=](const Byte*, Byte* out, int x, int y) {
        const int chroma = w / 2 * (y / 2) + x / 2;
        const int luma = 298 * (frame[w * y + x] - 16) + 128;
        const int cr = frame[w * h + chroma] - 128;
        const int cb = frame[w * h * 5 / 4 + chroma] - 128;
        out[0] = Clamp((luma + 516 * cb) >> 8);
        out[1] = Clamp((luma - 100 * cb - 208 * cr) >> 8);
        out[2] = Clamp((luma + 409 * cr) >> 8);
    });
}

void EncodePreview(ConstPixels converted, ConstPixels firstFrame, Byte* frame) {
    const int w = converted.width;
    const int h = converted.height;
    std::vector<int> crSums(w * h / 4, 512);
    std::vector<int> cbSums(w * h / 4, 512);
    std::vector<Byte> blended(converted.SizeBytes());
    EachPixel(converted, {blended.data(), w, h}, [&](const Byte* in, Byte* b, int x, int y) {
        std::copy_n(in, 3, b);
        if (firstFrame.data != nullptr) {
            const int fx = x * firstFrame.width / w;
            const int fy = y * firstFrame.height / h;
            for (int c = 0; c < 3; ++c) b[c] = Byte((b[c] + firstFrame.Row(fy)[3 * fx + c]) / 2);
        }
        frame[w * y + x] = Byte((77 * b[2] + 150 * b[1] + 29 * b[0] + 128) >> 8);
        const int chroma = w / 2 * (y / 2) + x / 2;
        cbSums[chroma] += (128 * b[0] - 85 * b[1] - 43 * b[2] - 128) >> 8;
        crSums[chroma] += (128 * b[2] - 107 * b[1] - 21 * b[0] - 128) >> 8;
    });
    const auto mean = [](int sum) { return Byte(sum / 4); };
    Byte* const cb = std::ranges::transform(crSums, frame + w * h, mean).out;
    std::ranges::transform(cbSums, cb, mean);
}

void FromBmpRows(const Byte* rows, Pixels picture) {
    EachPixel(picture, picture, [=](const Byte*, Byte* out, int x, int y) {
        const Byte* const in = rows + 3 * (x + picture.width * (picture.height - 1 - y));
        std::reverse_copy(in, in + 3, out);
    });
}

void ConvertToRgba(ConstPixels picture, bool turned, Byte* rgba) {
    const int width = picture.width;
    const int height = picture.height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            Byte* const out = rgba + 4 * (turned ? x * height + height - 1 - y : y * width + x);
            std::copy_n(picture.Row(y) + 3 * x, 3, out);
            out[3] = 255;
        }
    }
}

}  // namespace Plain
