#include "preview_conversion.h"

#include <algorithm>

#include "vectorised.h"

namespace Kivo {

namespace {

using Effects::ConstPixels;
using Effects::Pixels;

std::uint8_t ClampToByte(int value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
}

/// Luma and both chroma planes of a frame.
template <class Byte>
struct Planes {
    Byte* luma;
    Byte* cr;
    Byte* cb;

    Planes(Byte* frame, int width, int height)
        : luma(frame),
          cr(frame + std::ptrdiff_t{width} * height),
          cb(cr + std::ptrdiff_t{width} * height / 4) {}
};

/// Two pixels of a row, which share their chroma. Multiplying is cheaper than looking products up.
struct ConvertRow {
    KIVO_INLINE void Run(const std::uint8_t* luma, const std::uint8_t* crRow,
                         const std::uint8_t* cbRow, std::uint8_t* out, int pairs) {
        for (int i = 0; i < pairs; ++i) {
            const int cr = crRow[i] - 128;
            const int cb = cbRow[i] - 128;
            const int blue = 516 * cb;
            const int green = -100 * cb - 208 * cr;
            const int red = 409 * cr;
            const int first = 298 * (luma[2 * i] - 16) + 128;
            const int second = 298 * (luma[2 * i + 1] - 16) + 128;
            out[6 * i] = ClampToByte((first + blue) >> 8);
            out[6 * i + 1] = ClampToByte((first + green) >> 8);
            out[6 * i + 2] = ClampToByte((first + red) >> 8);
            out[6 * i + 3] = ClampToByte((second + blue) >> 8);
            out[6 * i + 4] = ClampToByte((second + green) >> 8);
            out[6 * i + 5] = ClampToByte((second + red) >> 8);
        }
    }
};

struct EncodeRows {
    KIVO_INLINE int Cr(const std::uint8_t* p) {
        return (128 * p[2] - 107 * p[1] - 21 * p[0] - 128) >> 8;
    }
    KIVO_INLINE int Cb(const std::uint8_t* p) {
        return (128 * p[0] - 85 * p[1] - 43 * p[2] - 128) >> 8;
    }
    KIVO_INLINE void Luma(const std::uint8_t* row, std::uint8_t* luma, int width) {
        for (int x = 0; x < width; ++x) {
            const std::uint8_t* const p = row + 3 * x;
            luma[x] = static_cast<std::uint8_t>((77 * p[2] + 150 * p[1] + 29 * p[0] + 128) >> 8);
        }
    }
    KIVO_INLINE void Run(const std::uint8_t* upper, const std::uint8_t* lower,
                         std::uint8_t* upperLuma, std::uint8_t* lowerLuma, std::uint8_t* cr,
                         std::uint8_t* cb, int width) {
        Luma(upper, upperLuma, width);
        Luma(lower, lowerLuma, width);
        for (int i = 0; i < width / 2; ++i) {
            const std::uint8_t* const a = upper + 6 * i;
            const std::uint8_t* const b = lower + 6 * i;
            // The sums are above -512, so nothing negative is divided.
            cr[i] = static_cast<std::uint8_t>((Cr(a) + Cr(a + 3) + Cr(b) + Cr(b + 3) + 512) / 4);
            cb[i] = static_cast<std::uint8_t>((Cb(a) + Cb(a + 3) + Cb(b) + Cb(b + 3) + 512) / 4);
        }
    }
};

/// Pixels of a row that are blended together.
constexpr int kChunkPixels = 320;

/// The mean of `count` pixels from (x, y) and the pixels at the proportional place in `firstFrame`,
/// rounded down.
void BlendRow(ConstPixels converted, ConstPixels firstFrame, int x, int y, int count,
              std::uint8_t* out) {
    const std::uint8_t* const in = converted.Row(y) + 3 * x;
    const std::uint8_t* const first = firstFrame.Row(y * firstFrame.height / converted.height);
    for (int i = 0; i < count; ++i) {
        const std::uint8_t* const other =
            first + 3 * ((x + i) * firstFrame.width / converted.width);
        for (int c = 0; c < 3; ++c) {
            out[3 * i + c] = static_cast<std::uint8_t>((in[3 * i + c] + other[c]) >> 1);
        }
    }
}

}  // namespace

void ConvertPreview(const std::uint8_t* frame, Pixels converted) {
    const int width = converted.width;
    const Planes<const std::uint8_t> planes(frame, width, converted.height);
    for (int y = 0; y < converted.height; ++y) {
        const std::ptrdiff_t chroma = std::ptrdiff_t{width / 2} * (y / 2);
        Effects::RunVectorised<ConvertRow>(planes.luma + std::ptrdiff_t{width} * y,
                                           planes.cr + chroma, planes.cb + chroma, converted.Row(y),
                                           width / 2);
    }
}

void EncodePreview(ConstPixels converted, ConstPixels firstFrame, std::uint8_t* frame) {
    const int width = converted.width;
    const Planes<std::uint8_t> planes(frame, width, converted.height);
    std::uint8_t blended[2][3 * kChunkPixels];
    for (int y = 0; y < converted.height; y += 2) {
        for (int x = 0; x < width; x += kChunkPixels) {
            const int count = std::min(kChunkPixels, width - x);
            const std::uint8_t* rows[2] = {converted.Row(y) + 3 * x, converted.Row(y + 1) + 3 * x};
            if (firstFrame.data != nullptr) {
                for (int i = 0; i < 2; ++i) {
                    BlendRow(converted, firstFrame, x, y + i, count, blended[i]);
                    rows[i] = blended[i];
                }
            }
            const std::ptrdiff_t luma = x + std::ptrdiff_t{width} * y;
            const std::ptrdiff_t chroma = x / 2 + std::ptrdiff_t{width / 2} * (y / 2);
            Effects::RunVectorised<EncodeRows>(rows[0], rows[1], planes.luma + luma,
                                               planes.luma + luma + width, planes.cr + chroma,
                                               planes.cb + chroma, count);
        }
    }
}

}  // namespace Kivo
