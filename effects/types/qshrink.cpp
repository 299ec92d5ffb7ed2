#include "effects/types/qshrink.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

void QShrink(ConstPixels source, Pixels destination) {
    const int width = source.width / 2;
    assert(destination.width == width && destination.height == source.height / 2);
    assert(AreApart(source, destination));
    for (int y = 0; y < source.height / 2; ++y) {
        const std::uint8_t* const in = source.Row(2 * y);
        std::uint8_t* const out = destination.data + std::ptrdiff_t{3} * width * y;
        // Four bytes a pixel, the fourth being overwritten by the next one; three for the last.
        for (int x = 0; x + 1 < width; ++x) std::memcpy(out + 3 * x, in + 6 * x, 4);
        if (width > 0) std::memcpy(out + 3 * (width - 1), in + 6 * (width - 1), 3);
    }
}

}  // namespace Kivo::Effects
