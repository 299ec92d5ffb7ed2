// Pixels that Cairo draws on and from.
#pragma once

#include <cairo.h>

#include <osp/graphics/dimension.h>

#include "osp/base/owner.h"
#include "osp/base/values/block_pool.h"

namespace Osp::Graphics {

using CairoPointer = Base::Owner<cairo_t, cairo_destroy>;

/// A Cairo image surface over recycled memory: 32 bits a pixel in native byte order, premultiplied,
/// rows top to bottom, stride 4 x width. One thread at a time.
class Surface {
  public:
    /// kWithAlpha starts transparent, kOpaque with unspecified colours.
    enum class Kind { kWithAlpha, kOpaque };

    /// Both sides are positive and at most 32,767, Cairo's limit.
    Surface(Dimension dimension, Kind kind);

    Dimension GetDimension() const { return dimension_; }
    cairo_surface_t* Cairo() const { return surface_.get(); }

    /// For writing past Cairo: call MarkDirty when done.
    std::uint8_t* Data() { return block_.data(); }
    const std::uint8_t* Data() const { return block_.data(); }
    int StrideBytes() const { return dimension_.width * 4; }
    void MarkDirty() { cairo_surface_mark_dirty(surface_.get()); }

  private:
    Dimension dimension_;
    Base::Block block_;
    Base::Owner<cairo_surface_t, cairo_surface_destroy> surface_;  // after block_, which it uses
};

}  // namespace Osp::Graphics
