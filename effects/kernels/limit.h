// Clamping to the range of a byte.
#pragma once

namespace Kivo::Effects {

/// `value`, or the nearer end of the closed range 0 to 255. Keeps its type; the caller narrows.
template <class T>
constexpr T limit(const T& value) {
    if (value < T{0}) return T{0};
    if (value > T{255}) return T{255};
    return value;
}

}  // namespace Kivo::Effects
