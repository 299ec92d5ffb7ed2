// An upright rectangle in pixels.
#pragma once

#include <osp/graphics/dimension.h>
#include <osp/graphics/point.h>

namespace Osp::Graphics {

/// Covers x to x + width - 1 and y to y + height - 1.
struct Rectangle {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    constexpr bool Contains(Point p) const {
        return p.x >= x && p.y >= y && p.x < x + width && p.y < y + height;
    }
    constexpr bool IsEmpty() const { return width <= 0 || height <= 0; }
    constexpr Rectangle MovedBy(int dx, int dy) const { return {x + dx, y + dy, width, height}; }
    constexpr Dimension Size() const { return {width, height}; }

    friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

}  // namespace Osp::Graphics
