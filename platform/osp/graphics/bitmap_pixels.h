// What bitmaps share: one picture in up to two forms, each made when first asked for.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <osp/graphics/dimension.h>

#include "osp/base/values/block_pool.h"
#include "osp/graphics/surface.h"

namespace Osp::Graphics {

/// A picture is decoded or built as bytes R, G, B, A (codecs) or as a Cairo surface (drawing).
/// Most pictures only ever need one form. Loop thread only.
class BitmapPixels {
  public:
    /// Draws the picture into the surface it is given; false when that fails.
    using Loader = std::function<bool(Surface&)>;

    /// Both sides are positive; `rgba` and `surface` have just that size.
    BitmapPixels(Dimension dimension, Base::Block rgba);
    BitmapPixels(Dimension dimension, std::shared_ptr<Surface> surface);
    /// Calls `loader` when the picture is first needed; a failure leaves it transparent.
    BitmapPixels(Dimension dimension, Loader loader);

    Dimension GetDimension() const { return dimension_; }
    /// width x height x 4 bytes R, G, B, A, not premultiplied.
    const std::uint8_t* Rgba() const;
    /// The same, premultiplied.
    const Surface& Drawable() const;

  private:
    Dimension dimension_;
    mutable Loader loader_;
    mutable std::optional<Base::Block> rgba_;
    mutable std::shared_ptr<Surface> surface_;
};

}  // namespace Osp::Graphics
