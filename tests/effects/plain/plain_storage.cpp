#include "tests/effects/plain/plain_storage.h"

namespace Plain {

void FromBmpRows(const std::uint8_t* rows, Kivo::Effects::Pixels picture) {
    const int width = picture.width;
    const int height = picture.height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < 3; ++c) {
                picture.data[3 * (x + width * (height - 1 - y)) + 2 - c] =
                    rows[3 * (x + width * y) + c];
            }
        }
    }
}

void ConvertToRgba(Kivo::Effects::ConstPixels picture, bool turned, std::uint8_t* rgba) {
    const int width = picture.width;
    const int height = picture.height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int at = turned ? x * height + height - 1 - y : y * width + x;
            for (int c = 0; c < 3; ++c) rgba[4 * at + c] = picture.data[3 * (x + width * y) + c];
            rgba[4 * at + 3] = 255;
        }
    }
}

}  // namespace Plain
