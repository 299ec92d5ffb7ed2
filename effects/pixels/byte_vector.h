// Sixteen bytes in a register, for loops that move bytes about instead of calculating.
#pragma once

#include <cstdint>
#include <cstring>

#include "effects/pixels/vectorised.h"

namespace Kivo::Effects {

/// To be shuffled only where CanShuffleBytes(): elsewhere it is slower than the plain loop.
using ByteVector [[gnu::vector_size(16)]] = std::uint8_t;

KIVO_INLINE ByteVector LoadBytes(const std::uint8_t* from) {
    ByteVector bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return bytes;
}

}  // namespace Kivo::Effects
