#include "effects/conversions/rgba.h"

#include <algorithm>
#include <cassert>

#include "effects/pixels/byte_vector.h"
#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

namespace {

struct AddAlpha {
    static constexpr std::ptrdiff_t kPixelsAtOnce = 4;

    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out, std::ptrdiff_t pixels,
                         bool shuffles) {
        std::ptrdiff_t i = 0;
        if (shuffles) {
            const ByteVector alpha = ByteVector{} + std::uint8_t{255};
            // As long as nothing beyond the last pixel is read.
            for (; 3 * i + std::ptrdiff_t{sizeof(ByteVector)} <= 3 * pixels; i += kPixelsAtOnce) {
                const ByteVector rgba =
                    __builtin_shufflevector(LoadBytes(in + 3 * i), alpha, 0, 1, 2, 16, 3, 4, 5, 16,
                                            6, 7, 8, 16, 9, 10, 11, 16);
                std::memcpy(out + 4 * i, &rgba, sizeof rgba);
            }
        }
        for (; i < pixels; ++i) {
            const std::uint8_t pixel[4] = {in[3 * i], in[3 * i + 1], in[3 * i + 2], 255};
            std::memcpy(out + 4 * i, pixel, sizeof pixel);
        }
    }
};

/// Squares of pixels, so that both the rows read and the rows written stay in the cache.
void TurnToRgba(ConstPixels picture, std::uint8_t* rgba, Rows rows) {
    constexpr int kSquare = 16;
    const int height = picture.height;
    for (int top = rows.first; top < rows.last; top += kSquare) {
        const int bottom = std::min(top + kSquare, rows.last);
        for (int x = 0; x < picture.width; ++x) {
            std::uint8_t* const out = rgba + std::ptrdiff_t{4} * (std::ptrdiff_t{height} * x);
            for (int y = top; y < bottom; ++y) {
                const std::uint8_t* const in = picture.Row(y) + 3 * x;
                const std::uint8_t pixel[4] = {in[0], in[1], in[2], 255};
                std::memcpy(out + std::ptrdiff_t{4} * (height - 1 - y), pixel, sizeof pixel);
            }
        }
    }
}

}  // namespace

void ConvertToRgba(ConstPixels picture, bool turned, std::uint8_t* rgba, Rows rows) {
    assert(AreApart(picture.data, picture.SizeBytes(), rgba,
                    picture.SizeBytes() / kBytesPerPixel * kBytesPerRgbaPixel));
    const Rows clipped = rows.ClippedTo(picture.height);
    if (turned) return TurnToRgba(picture, rgba, clipped);
    const std::ptrdiff_t first = std::ptrdiff_t{picture.width} * clipped.first;
    const std::ptrdiff_t last = std::ptrdiff_t{picture.width} * clipped.last;
    RunVectorised<AddAlpha>(picture.data + kBytesPerPixel * first,
                            rgba + kBytesPerRgbaPixel * first, last - first, CanShuffleBytes());
}

}  // namespace Kivo::Effects
