#include "ui/scaled_picture.h"

namespace Kivo {

result ScaledPicture::Draw(Osp::Graphics::Canvas& canvas, const Osp::Graphics::Rectangle& bounds) {
    const Osp::Graphics::Point place{bounds.x, bounds.y};
    if (bounds.width == bitmap_.GetWidth() && bounds.height == bitmap_.GetHeight()) {
        return canvas.DrawBitmap(place, bitmap_);
    }
    Osp::Graphics::Bitmap& copy = copies_[{bounds.width, bounds.height}];
    if (copy.GetWidth() == 0 && Osp::Failed(copy.Construct(bitmap_, bounds.Size()))) {
        return canvas.DrawBitmap(bounds, bitmap_);
    }
    return canvas.DrawBitmap(place, copy);
}

}  // namespace Kivo
