// Views of packed 24-bit pictures, as every kernel takes them.
//
// A kernel's source and destination are of one size, except for QShrink's. BW, Colorize, Mix,
// Negative, Sepia and Vignet may work in place; for all others the two do not overlap.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace Kivo::Effects {

inline constexpr int kBytesPerPixel = 3;      ///< of every picture here
inline constexpr int kBytesPerRgbaPixel = 4;  ///< of the bitmaps that are encoded

/// A picture to read: three bytes a pixel (red, green, blue), rows top to bottom, stride exactly
/// 3 * width. Views never own their bytes.
struct ConstPixels {
    const std::uint8_t* data = nullptr;  // not owned
    int width = 0;
    int height = 0;

    std::ptrdiff_t StrideBytes() const { return std::ptrdiff_t{kBytesPerPixel} * width; }
    std::size_t SizeBytes() const {
        return std::size_t{kBytesPerPixel} * static_cast<std::size_t>(width) *
               static_cast<std::size_t>(height);
    }
    const std::uint8_t* Row(int y) const { return data + y * StrideBytes(); }
};

/// A picture to write, of the same layout.
struct Pixels {
    std::uint8_t* data = nullptr;  // not owned
    int width = 0;
    int height = 0;

    std::ptrdiff_t StrideBytes() const { return std::ptrdiff_t{kBytesPerPixel} * width; }
    std::size_t SizeBytes() const { return ConstPixels(*this).SizeBytes(); }
    std::uint8_t* Row(int y) const { return data + y * StrideBytes(); }
    operator ConstPixels() const { return {data, width, height}; }
};

/// The rows [first, last) of a destination that a call is to produce; the default is all of them.
/// Kernels that take Rows give the same bytes for every division into bands, so that bands can run
/// on several threads, each with a Scratch of its own.
struct Rows {
    int first = 0;
    int last = std::numeric_limits<int>::max();

    Rows ClippedTo(int height) const {
        return {std::clamp(first, 0, height), std::clamp(last, 0, height)};
    }
};

}  // namespace Kivo::Effects
