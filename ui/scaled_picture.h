// A picture that is drawn at several sizes.
#pragma once

#include <map>
#include <utility>

#include <osp/graphics/bitmap.h>
#include <osp/graphics/canvas.h>

namespace Kivo {

/// Keeps a copy at every size at which it has been drawn: scaling costs far more than drawing, and
/// an animation comes by the same few sizes every time.
class ScaledPicture {
  public:
    explicit ScaledPicture(const Osp::Graphics::Bitmap& bitmap) : bitmap_(bitmap) {}

    result Draw(Osp::Graphics::Canvas& canvas, const Osp::Graphics::Rectangle& bounds);

  private:
    Osp::Graphics::Bitmap bitmap_;
    std::map<std::pair<int, int>, Osp::Graphics::Bitmap> copies_;  // by width and height
};

}  // namespace Kivo
