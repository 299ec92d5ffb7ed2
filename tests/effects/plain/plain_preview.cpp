#include "tests/effects/plain/plain_preview.h"

#include <array>
#include <cstddef>

namespace Plain {

namespace {

struct Tables {
    std::array<int, 256> luma, redCr, greenCr, greenCb, blueCb;
    std::array<std::uint8_t, 1024> clamp;

    Tables() {
        for (int i = 0; i < 256; ++i) {
            luma[i] = 298 * (i - 16) + 128;
            redCr[i] = 409 * (i - 128);
            greenCr[i] = 208 * (i - 128);
            greenCb[i] = 100 * (i - 128);
            blueCb[i] = 516 * (i - 128);
        }
        for (int i = -384; i < 640; ++i) {
            clamp[i + 384] = static_cast<std::uint8_t>(i < 0 ? 0 : i < 255 ? i : 255);
        }
    }
    std::uint8_t Clamp(int value) const { return clamp.at(value + 384); }
};

}  // namespace

void ConvertPreview(const std::uint8_t* frame, Kivo::Effects::Pixels converted) {
    static const Tables tables;
    const int w = converted.width;
    const int h = converted.height;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const int chroma = w / 2 * (y / 2) + x / 2;
            const int luma = tables.luma[frame[w * y + x]];
            const int cr = frame[w * h + chroma];
            const int cb = frame[w * h * 5 / 4 + chroma];
            std::uint8_t* out = converted.Row(y) + 3 * x;
            out[0] = tables.Clamp((luma + tables.blueCb[cb]) >> 8);
            out[1] = tables.Clamp((luma - tables.greenCb[cb] - tables.greenCr[cr]) >> 8);
            out[2] = tables.Clamp((luma + tables.redCr[cr]) >> 8);
        }
    }
}

void EncodePreview(Kivo::Effects::ConstPixels converted, Kivo::Effects::ConstPixels firstFrame,
                   std::uint8_t* frame) {
    const int w = converted.width;
    const int h = converted.height;
    for (int y = 0; y < h; y += 2) {
        for (int x = 0; x < w; x += 2) {
            int crSum = 0;
            int cbSum = 0;
            for (int i = 0; i < 4; ++i) {
                const int px = x + i % 2;
                const int py = y + i / 2;
                int b[3];
                for (int c = 0; c < 3; ++c) {
                    b[c] = converted.Row(py)[3 * px + c];
                    if (firstFrame.data == nullptr) continue;
                    const int fx = px * firstFrame.width / w;
                    const int fy = py * firstFrame.height / h;
                    const float mean =
                        static_cast<float>(b[c] + firstFrame.Row(fy)[3 * fx + c]) * 0.5F;
                    b[c] = static_cast<int>(mean > 255.0F ? 255.0F : mean);
                }
                const int luma = (77 * b[2] + 150 * b[1] + 29 * b[0] + 128) >> 8;
                frame[w * py + px] = static_cast<std::uint8_t>(luma);
                cbSum += (128 * b[0] - 85 * b[1] - 43 * b[2] - 128) >> 8;
                crSum += (128 * b[2] - 107 * b[1] - 21 * b[0] - 128) >> 8;
            }
            const int chroma = w / 2 * (y / 2) + x / 2;
            frame[w * h + chroma] = static_cast<std::uint8_t>((crSum + 512) / 4);
            frame[w * h * 5 / 4 + chroma] = static_cast<std::uint8_t>((cbSum + 512) / 4);
        }
    }
}

}  // namespace Plain
