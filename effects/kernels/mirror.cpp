#include "effects/kernels/mirror.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

namespace {

void ReflectTop(ConstPixels source, Pixels destination) {
    const auto rowBytes = static_cast<std::size_t>(source.StrideBytes());
    for (int y = 0; y < source.height / 2; ++y) {
        std::memcpy(destination.Row(y), source.Row(y), rowBytes);
        std::memcpy(destination.Row(source.height - 1 - y), source.Row(y), rowBytes);
    }
}

void ReflectLeft(ConstPixels source, Pixels destination) {
    const int half = source.width / 2;
    for (int y = 0; y < source.height; ++y) {
        const std::uint8_t* const in = source.Row(y);
        std::memcpy(destination.Row(y), in, static_cast<std::size_t>(3 * half));
        std::uint8_t* out = destination.Row(y) + 3 * (source.width - half);
        // Four bytes a pixel, the fourth being overwritten by the next one; three for the last.
        for (int x = half - 1; x > 0; --x, out += 3) std::memcpy(out, in + 3 * x, 4);
        if (half > 0) std::memcpy(out, in, 3);
    }
}

}  // namespace

void Mirror(ConstPixels source, Pixels destination, bool vertical) {
    assert(AreAlikeAndApart(source, destination));
    vertical ? ReflectTop(source, destination) : ReflectLeft(source, destination);
}

}  // namespace Kivo::Effects
