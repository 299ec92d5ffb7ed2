// Pictures in three planes, which is how devices' pictures become the camera's.
#pragma once

#include <array>
#include <cstdint>

#include <osp/graphics/dimension.h>
#include <osp/graphics/rectangle.h>

#include "osp/base/values/block_pool.h"
#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// `part`, widened to whole samples of chroma but not past `size`, whose sides are even.
Graphics::Rectangle WholeSamples(const Graphics::Rectangle& part, const Graphics::Dimension& size);

/// 4:2:0, Y, Cb, Cr; not owned.
struct PlanarView {
    std::array<VideoPlane, 3> planes;
    Graphics::Dimension size;
    bool isFullRange = false;  // as a JPEG has it; else video range

    /// WholeSamples of it.
    PlanarView Part(const Graphics::Rectangle& part) const;
};

/// A picture in memory of its own without gaps, with even sides, reused for one of the same size.
class PlanarPicture {
  public:
    /// Its content is unspecified afterwards.
    void Fit(const Graphics::Dimension& size);
    PlanarView View(bool isFullRange) const;

    std::uint8_t* Plane(int index) { return block_.data() + Offset(index); }
    int Stride(int index) const { return index == 0 ? size_.width : size_.width / 2; }
    const Graphics::Dimension& Size() const { return size_; }

  private:
    std::size_t Offset(int index) const;

    Base::Block block_;
    Graphics::Dimension size_;
};

}  // namespace Osp::Media
