// What the kernels assert about the pictures they are given.
#pragma once

#include <cstddef>
#include <cstdint>

#include "effects/pixels/pixels.h"

namespace Kivo::Effects {

inline bool AreApart(const std::uint8_t* a, std::size_t aBytes, const std::uint8_t* b,
                     std::size_t bBytes) {
    // As numbers: the order of pointers into different objects is not defined.
    const auto first = reinterpret_cast<std::uintptr_t>(a);
    const auto second = reinterpret_cast<std::uintptr_t>(b);
    return first + aBytes <= second || second + bBytes <= first;
}

inline bool AreApart(ConstPixels a, ConstPixels b) {
    return AreApart(a.data, a.SizeBytes(), b.data, b.SizeBytes());
}

inline bool AreOfOneSize(ConstPixels a, ConstPixels b) {
    return a.width == b.width && a.height == b.height;
}

/// For kernels that read other pixels than those they write.
inline bool AreAlikeAndApart(ConstPixels a, ConstPixels b) {
    return AreOfOneSize(a, b) && AreApart(a, b);
}

/// For kernels that may work in place: anything in between would overwrite what is yet to be read.
inline bool AreAlike(ConstPixels a, ConstPixels b) {
    return AreOfOneSize(a, b) && (a.data == b.data || AreApart(a, b));
}

}  // namespace Kivo::Effects
