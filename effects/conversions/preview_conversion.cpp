#include "effects/conversions/preview_conversion.h"

#include <algorithm>
#include <cassert>

#include "effects/pixels/preconditions.h"
#include "effects/pixels/vectorised.h"

namespace Kivo {

namespace {

using Effects::ConstPixels;
using Effects::Pixels;

KIVO_INLINE std::uint8_t ClampToByte(int value) {
    return static_cast<std::uint8_t>(std::min(std::max(value, 0), 255));
}

/// Every 2 x 2 pixels share their chroma.
[[maybe_unused]] bool HasEvenSides(ConstPixels picture) {
    return picture.width % 2 == 0 && picture.height % 2 == 0;
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

/// Pixels of a row that are converted together; even, so that none is parted from its chroma.
constexpr int kChunkPixels = 320;
static_assert(kChunkPixels % 2 == 0);

/// One channel after the other, so that each loop stays simple enough to be vectorised.
/// Multiplying is cheaper than looking products up.
struct ConvertChunk {
    KIVO_INLINE void Run(const std::uint8_t* luma, const std::uint8_t* crRow,
                         const std::uint8_t* cbRow, std::uint8_t* out, int width) {
        std::uint8_t cr[kChunkPixels];
        std::uint8_t cb[kChunkPixels];
        std::uint8_t blue[kChunkPixels];
        std::uint8_t green[kChunkPixels];
        std::uint8_t red[kChunkPixels];
        for (int i = 0; i < width / 2; ++i) {
            cr[2 * i] = cr[2 * i + 1] = crRow[i];
            cb[2 * i] = cb[2 * i + 1] = cbRow[i];
        }
        for (int x = 0; x < width; ++x) {
            const int light = 298 * (luma[x] - 16) + 128;
            blue[x] = ClampToByte((light + 516 * (cb[x] - 128)) >> 8);
            green[x] = ClampToByte((light - 100 * (cb[x] - 128) - 208 * (cr[x] - 128)) >> 8);
            red[x] = ClampToByte((light + 409 * (cr[x] - 128)) >> 8);
        }
        for (int x = 0; x < width; ++x) {
            out[3 * x] = blue[x];
            out[3 * x + 1] = green[x];
            out[3 * x + 2] = red[x];
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
    assert(HasEvenSides(converted));
    assert(Effects::AreApart(frame, PreviewFrameBytes(width, converted.height), converted.data,
                             converted.SizeBytes()));
    const Planes<const std::uint8_t> planes(frame, width, converted.height);
    for (int y = 0; y < converted.height; ++y) {
        const std::uint8_t* const luma = planes.luma + std::ptrdiff_t{width} * y;
        const std::ptrdiff_t chroma = std::ptrdiff_t{width / 2} * (y / 2);
        for (int x = 0; x < width; x += kChunkPixels) {
            Effects::RunVectorised<ConvertChunk>(
                luma + x, planes.cr + chroma + x / 2, planes.cb + chroma + x / 2,
                converted.Row(y) + 3 * x, std::min(kChunkPixels, width - x));
        }
    }
}

void EncodePreview(ConstPixels converted, ConstPixels firstFrame, std::uint8_t* frame) {
    const int width = converted.width;
    assert(HasEvenSides(converted));
    assert(Effects::AreApart(converted.data, converted.SizeBytes(), frame,
                             PreviewFrameBytes(width, converted.height)));
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
