// Rows of packed pixels that somebody else owns.
#pragma once

#include <cstddef>
#include <cstdint>

#include <osp/graphics/dimension.h>

namespace Osp::Media {

/// The order of a pixel's bytes in memory. kBgrx is what Cairo draws on a little-endian machine;
/// its fourth byte means nothing.
enum class PixelLayout { kRgb, kRgba, kBgrx };

constexpr int BytesPerPixel(PixelLayout layout) {
    return layout == PixelLayout::kRgb ? 3 : 4;
}

constexpr std::size_t PackedSize(const Graphics::Dimension& size, PixelLayout layout) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) *
           static_cast<std::size_t>(BytesPerPixel(layout));
}

/// `pixels` is not owned. Rows run top to bottom, `strideBytes` apart.
struct PixelView {
    const std::uint8_t* pixels = nullptr;
    Graphics::Dimension size;
    int strideBytes = 0;
    PixelLayout layout = PixelLayout::kRgba;
};

/// Rows without gaps.
constexpr PixelView PackedView(const std::uint8_t* pixels, const Graphics::Dimension& size,
                               PixelLayout layout) {
    return {pixels, size, size.width * BytesPerPixel(layout), layout};
}

/// What is taken from files is bounded before anything is allocated for it: a side by what Cairo
/// can draw, the whole by what a phone can hold.
constexpr int kMostPixelsASide = 32767;
constexpr long long kMostPixels = 64'000'000;

constexpr bool IsAcceptableSize(long long width, long long height) {
    return width > 0 && height > 0 && width <= kMostPixelsASide && height <= kMostPixelsASide &&
           width * height <= kMostPixels;
}

}  // namespace Osp::Media
