// The platform's own side of bitmaps and canvases.
#pragma once

#include <memory>
#include <utility>

#include <osp/graphics/bitmap.h>
#include <osp/graphics/canvas.h>

namespace Osp::Graphics {

/// What codecs, controls and cameras need to know of them and applications do not.
class Access {
  public:
    /// Null before construction.
    static const std::shared_ptr<const BitmapPixels>& Pixels(const Bitmap& bitmap) {
        return bitmap.pixels_;
    }
    /// `pixels` is not null.
    static Bitmap MakeBitmap(std::shared_ptr<const BitmapPixels> pixels) {
        return Bitmap(std::move(pixels));
    }
    /// A canvas that draws into `surface`, which is not null.
    static Canvas MakeCanvas(std::shared_ptr<Surface> surface) {
        return Canvas(std::move(surface));
    }
};

}  // namespace Osp::Graphics
