// A raw picture in one block of memory, in which areas of the pattern's colours are filled.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tests/support/pictures/colour_bars.h"
#include "tests/support/virtual_camera/mode.h"

namespace Osp::Testing {

/// Rows of the first plane lie `strideBytes` apart; those of I420's other planes half of that.
struct Canvas {
    /// The mode's rows with `paddingBytes`, an even number, after each. No MJPG.
    Canvas(const Mode& mode, int paddingBytes);

    std::size_t SizeBytes() const;
    /// `area` is at even positions and of even size.
    void Fill(std::uint8_t* bytes, const PatternArea& area, Bar bar) const;
    /// Everything but the number.
    void PaintPattern(std::uint8_t* bytes) const;
    void PaintNumber(std::uint8_t* bytes, unsigned number) const;

    PixelFormat format;
    int width;
    int height;
    int strideBytes;
};

}  // namespace Osp::Testing
