// Packed pixels widened to words of four bytes, for arithmetic on whole pixels, and grey ones
// packed again. `shuffles` is CanShuffleBytes(), asked once for a picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/pixels/byte_vector.h"

namespace Kivo::Effects {

/// words[i] is pixel i: red in its lowest byte, then green and blue; the highest byte is anything.
KIVO_INLINE void WidenPixels(const std::uint8_t* in, std::uint32_t* words, std::size_t pixels,
                             bool shuffles) {
    std::size_t i = 0;
    if (shuffles) {
        // Four pixels at a time, as long as nothing beyond the last one is read.
        for (; 3 * i + sizeof(ByteVector) <= 3 * pixels; i += 4) {
            const ByteVector packed = LoadBytes(in + 3 * i);
            const ByteVector four = __builtin_shufflevector(packed, packed, 0, 1, 2, 2, 3, 4, 5, 5,
                                                            6, 7, 8, 8, 9, 10, 11, 11);
            std::memcpy(words + i, &four, sizeof four);
        }
    }
    for (; i < pixels; ++i) {
        words[i] =
            in[3 * i] | std::uint32_t{in[3 * i + 1]} << 8 | std::uint32_t{in[3 * i + 2]} << 16;
    }
}

/// Every byte of `in` three times: grey pixels.
KIVO_INLINE void SpreadGrey(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels,
                            bool shuffles) {
    std::size_t i = 0;
    if (shuffles) {
        for (; i + sizeof(ByteVector) <= pixels; i += sizeof(ByteVector)) {
            const ByteVector grey = LoadBytes(in + i);
            const ByteVector thirds[3] = {
                __builtin_shufflevector(grey, grey, 0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5),
                __builtin_shufflevector(grey, grey, 5, 5, 6, 6, 6, 7, 7, 7, 8, 8, 8, 9, 9, 9, 10,
                                        10),
                __builtin_shufflevector(grey, grey, 10, 11, 11, 11, 12, 12, 12, 13, 13, 13, 14, 14,
                                        14, 15, 15, 15)};
            std::memcpy(out + 3 * i, thirds, sizeof thirds);
        }
    }
    for (; i < pixels; ++i) out[3 * i] = out[3 * i + 1] = out[3 * i + 2] = in[i];
}

}  // namespace Kivo::Effects
