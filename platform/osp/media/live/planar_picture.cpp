#include "osp/media/live/planar_picture.h"

#include <algorithm>
#include <cassert>

#include "osp/media/camera/i420.h"

namespace Osp::Media {

Graphics::Rectangle WholeSamples(const Graphics::Rectangle& part, const Graphics::Dimension& size) {
    assert(size.width % 2 == 0 && size.height % 2 == 0);
    const auto even = [](int begin, int length, int most) {
        return std::max(2, std::min((length + (begin & 1)) & ~1, most - (begin & ~1)));
    };
    return {part.x & ~1, part.y & ~1, even(part.x, part.width, size.width),
            even(part.y, part.height, size.height)};
}

PlanarView PlanarView::Part(const Graphics::Rectangle& part) const {
    const auto [left, top, width, height] = WholeSamples(part, size);
    assert(left + width <= size.width && top + height <= size.height);
    PlanarView view = *this;
    view.size = {width, height};
    for (int i = 0; i < 3; ++i) {
        const std::ptrdiff_t x = i == 0 ? left : left / 2;
        const std::ptrdiff_t y = i == 0 ? top : top / 2;
        VideoPlane& plane = view.planes[static_cast<std::size_t>(i)];
        plane.data += y * plane.strideBytes + x;
    }
    return view;
}

void PlanarPicture::Fit(const Graphics::Dimension& size) {
    assert(size.width > 0 && size.height > 0 && size.width % 2 == 0 && size.height % 2 == 0);
    size_ = size;
    block_.Fit(I420Bytes(size));
}

std::size_t PlanarPicture::Offset(int index) const {
    const std::size_t luma =
        static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height);
    return index == 0 ? 0 : index == 1 ? luma : luma + luma / 4;
}

PlanarView PlanarPicture::View(bool isFullRange) const {
    const auto plane = [this](int index) {
        return VideoPlane{block_.data() + Offset(index), Stride(index)};
    };
    return {{plane(0), plane(1), plane(2)}, size_, isFullRange};
}

}  // namespace Osp::Media
