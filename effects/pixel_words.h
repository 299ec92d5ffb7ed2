// Packed pixels widened to words of four bytes, for arithmetic on whole pixels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "vectorised.h"

namespace Kivo::Effects {

namespace PixelWordsDetail {

using Vector [[gnu::vector_size(16)]] = std::uint8_t;
constexpr std::size_t kPixelsTogether = 4;

KIVO_INLINE Vector Load(const void* from) {
    Vector bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return bytes;
}

}  // namespace PixelWordsDetail

/// words[i] is pixel i: red in its lowest byte, then green and blue; the highest byte is anything.
/// `pixels` is a multiple of four. `shuffles` is CanShuffleBytes(), asked once for a picture.
KIVO_INLINE void WidenPixels(const std::uint8_t* in, std::uint32_t* words, std::size_t pixels,
                             bool shuffles) {
    using namespace PixelWordsDetail;
    if (!shuffles) {
        for (std::size_t i = 0; i < pixels; ++i, in += 3) {
            words[i] = in[0] | std::uint32_t{in[1]} << 8 | std::uint32_t{in[2]} << 16;
        }
        return;
    }
    const std::size_t last = pixels - kPixelsTogether;
    for (std::size_t i = 0; i < last; i += kPixelsTogether) {
        const Vector twelve = Load(in + 3 * i);
        const Vector four = __builtin_shufflevector(twelve, twelve, 0, 1, 2, 2, 3, 4, 5, 5, 6, 7, 8,
                                                    8, 9, 10, 11, 11);
        std::memcpy(words + i, &four, sizeof four);
    }
    // Nothing beyond the last pixel is read.
    const Vector twelve = Load(in + 3 * last - 4);
    const Vector four = __builtin_shufflevector(twelve, twelve, 4, 5, 6, 6, 7, 8, 9, 9, 10, 11, 12,
                                                12, 13, 14, 15, 15);
    std::memcpy(words + last, &four, sizeof four);
}

/// Every byte of `in` three times: grey pixels. `pixels` is a multiple of sixteen.
KIVO_INLINE void SpreadGrey(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels,
                            bool shuffles) {
    using namespace PixelWordsDetail;
    if (!shuffles) {
        for (std::size_t i = 0; i < pixels; ++i)
            out[3 * i] = out[3 * i + 1] = out[3 * i + 2] = in[i];
        return;
    }
    for (std::size_t i = 0; i < pixels; i += sizeof(Vector), out += 3 * sizeof(Vector)) {
        const Vector grey = Load(in + i);
        const Vector first =
            __builtin_shufflevector(grey, grey, 0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5);
        const Vector second =
            __builtin_shufflevector(grey, grey, 5, 5, 6, 6, 6, 7, 7, 7, 8, 8, 8, 9, 9, 9, 10, 10);
        const Vector third = __builtin_shufflevector(grey, grey, 10, 11, 11, 11, 12, 12, 12, 13, 13,
                                                     13, 14, 14, 14, 15, 15, 15);
        std::memcpy(out, &first, sizeof first);
        std::memcpy(out + sizeof first, &second, sizeof second);
        std::memcpy(out + 2 * sizeof first, &third, sizeof third);
    }
}

}  // namespace Kivo::Effects
