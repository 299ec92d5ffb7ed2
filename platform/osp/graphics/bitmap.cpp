#include <algorithm>
#include <cassert>
#include <utility>

#include <osp/graphics/bitmap.h>

#include "osp/base/out_of_memory.h"
#include "osp/base/trace.h"
#include "osp/graphics/access.h"
#include "osp/graphics/bitmap_pixels.h"

namespace Osp::Graphics {

namespace {

constexpr int kMostPixelsASide = 32767;  // Cairo's limit

bool IsSize(const Dimension& dimension) {
    const auto [width, height] = dimension;
    return width > 0 && height > 0 && width <= kMostPixelsASide && height <= kMostPixelsASide;
}

bool IsBitmap(const Base::ByteBuffer& buffer, const Dimension& dimension,
              BitmapPixelFormat format) {
    const auto [width, height] = dimension;
    return IsSize(dimension) && format == BitmapPixelFormat::kArgb8888 &&
           buffer.GetCapacity() == static_cast<long long>(width) * height * 4;
}

}  // namespace

Bitmap::Bitmap() = default;
Bitmap::Bitmap(std::shared_ptr<const BitmapPixels> pixels) : pixels_(std::move(pixels)) {
    assert(pixels_);
}
Bitmap::~Bitmap() = default;

result Bitmap::Construct(const Base::ByteBuffer& buffer, const Dimension& dimension,
                         BitmapPixelFormat format) {
    if (!IsBitmap(buffer, dimension, format)) return result::kInvalidArgument;
    Base::ByteBuffer copy;
    const result r = copy.Construct(buffer);
    return Failed(r) ? r : Construct(std::move(copy), dimension, format);
}

result Bitmap::Construct(Base::ByteBuffer&& buffer, const Dimension& dimension,
                         BitmapPixelFormat format) {
    if (!IsBitmap(buffer, dimension, format)) return result::kInvalidArgument;
    return Base::OrOutOfMemory([&] {
        pixels_ = std::make_shared<BitmapPixels>(dimension, Base::Block(std::move(buffer)));
        Base::Trace::Mark("bitmap-made");
        return result::kSuccess;
    });
}

result Bitmap::Construct(const Bitmap& original, const Dimension& dimension) {
    if (!original.pixels_ || !IsSize(dimension)) return result::kInvalidArgument;
    return Base::OrOutOfMemory([&] {
        auto surface = std::make_shared<Surface>(dimension, Surface::Kind::kWithAlpha);
        Canvas canvas = Access::MakeCanvas(surface);
        const result r =
            canvas.DrawBitmap(Rectangle{0, 0, dimension.width, dimension.height}, original);
        if (Succeeded(r)) pixels_ = std::make_shared<BitmapPixels>(dimension, std::move(surface));
        return r;
    });
}

int Bitmap::GetWidth() const {
    return pixels_ ? pixels_->GetDimension().width : 0;
}

int Bitmap::GetHeight() const {
    return pixels_ ? pixels_->GetDimension().height : 0;
}

}  // namespace Osp::Graphics
