#include "ui/forms/scaled_picture.h"

namespace Kivo {

result ScaledPicture::Draw(Osp::Graphics::Canvas& canvas, const Osp::Graphics::Rectangle& bounds) {
    if (bounds.Size() != usualSize_) return canvas.DrawBitmap(bounds, bitmap_);
    if (copy_.GetWidth() == 0) {
        const result r = copy_.Construct(bitmap_, usualSize_);
        if (Osp::Failed(r)) return r;
    }
    return canvas.DrawBitmap(Osp::Graphics::Point{bounds.x, bounds.y}, copy_);
}

}  // namespace Kivo
