// A picture that is mostly drawn smaller than it is.
#pragma once

#include <osp/graphics/bitmap.h>
#include <osp/graphics/canvas.h>

namespace Kivo {

/// Keeps a copy at its usual size, made when it is first needed: to shrink a picture by more than a
/// quarter takes ten times as long as by less, and a carousel that rests or turns shows most of its
/// pictures at that one size. At the sizes in between it is scaled while it is drawn, which takes
/// less than a copy would weigh.
class ScaledPicture {
  public:
    ScaledPicture(const Osp::Graphics::Bitmap& bitmap, const Osp::Graphics::Dimension& usualSize)
        : bitmap_(bitmap), usualSize_(usualSize) {}

    result Draw(Osp::Graphics::Canvas& canvas, const Osp::Graphics::Rectangle& bounds);

  private:
    Osp::Graphics::Bitmap bitmap_;
    Osp::Graphics::Dimension usualSize_;
    Osp::Graphics::Bitmap copy_;  // unconstructed until needed
};

}  // namespace Kivo
