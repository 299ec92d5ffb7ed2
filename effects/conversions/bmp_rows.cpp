#include "effects/conversions/bmp_rows.h"

#include <cassert>

#include "effects/pixels/byte_vector.h"
#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

namespace {

struct ReverseChannels {
    static constexpr std::ptrdiff_t kPixelsAtOnce = 5;

    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out, std::ptrdiff_t pixels,
                         bool shuffles) {
        std::ptrdiff_t i = 0;
        if (shuffles) {
            // The sixteenth byte belongs to a pixel that is yet to come, which overwrites it.
            for (; 3 * i + std::ptrdiff_t{sizeof(ByteVector)} <= 3 * pixels; i += kPixelsAtOnce) {
                const ByteVector bytes = LoadBytes(in + 3 * i);
                const ByteVector reversed = __builtin_shufflevector(
                    bytes, bytes, 2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15);
                std::memcpy(out + 3 * i, &reversed, sizeof reversed);
            }
        }
        for (; i < pixels; ++i) {
            out[3 * i] = in[3 * i + 2];
            out[3 * i + 1] = in[3 * i + 1];
            out[3 * i + 2] = in[3 * i];
        }
    }
};

}  // namespace

void FromBmpRows(const std::uint8_t* rows, Pixels picture) {
    assert(AreApart(rows, picture.SizeBytes(), picture.data, picture.SizeBytes()));
    const bool shuffles = CanShuffleBytes();
    for (int y = 0; y < picture.height; ++y) {
        RunVectorised<ReverseChannels>(rows + picture.StrideBytes() * y,
                                       picture.Row(picture.height - 1 - y),
                                       std::ptrdiff_t{picture.width}, shuffles);
    }
}

}  // namespace Kivo::Effects
