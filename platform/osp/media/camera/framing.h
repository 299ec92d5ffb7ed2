// What part of a picture a camera shows.
#pragma once

#include <algorithm>

#include <osp/graphics/dimension.h>
#include <osp/graphics/rectangle.h>

namespace Osp::Media {

/// The largest middle of `size` with the shape of `target`, magnified by 1 + zoomStep / 2.
constexpr Graphics::Rectangle MiddleOfShape(const Graphics::Dimension& size,
                                            const Graphics::Dimension& target, int zoomStep) {
    const auto [width, height] = size;
    const long long byHeight = static_cast<long long>(height) * target.width / target.height;
    const long long byWidth = static_cast<long long>(width) * target.height / target.width;
    const auto shrink = [zoomStep](long long side) {
        return static_cast<int>(std::max(1LL, side * 2 / (2 + zoomStep)));
    };
    const int cropWidth = shrink(std::min<long long>(width, byHeight));
    const int cropHeight = shrink(std::min<long long>(height, byWidth));
    return {(width - cropWidth) / 2, (height - cropHeight) / 2, cropWidth, cropHeight};
}

}  // namespace Osp::Media
