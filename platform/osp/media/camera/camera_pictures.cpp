#include "osp/media/camera/camera_pictures.h"

#include <algorithm>
#include <libyuv/rotate_argb.h>
#include <libyuv/scale_argb.h>

#include "osp/media/camera/i420.h"
#include "osp/media/picture/jpeg_codec.h"

namespace Osp::Media {

namespace {

using Graphics::Dimension;
using Graphics::Surface;

/// The largest middle of `size` with the shape of `target`, magnified by 1 + zoomStep / 2.
PixelView CropToShape(const PixelView& picture, const Dimension& target, int zoomStep) {
    const auto [width, height] = picture.size;
    const long long byHeight = static_cast<long long>(height) * target.width / target.height;
    const long long byWidth = static_cast<long long>(width) * target.height / target.width;
    const auto shrink = [zoomStep](long long side) {
        return static_cast<int>(std::max(1LL, side * 2 / (2 + zoomStep)));
    };
    PixelView cropped = picture;
    cropped.size = {shrink(std::min<long long>(width, byHeight)),
                    shrink(std::min<long long>(height, byWidth))};
    const std::ptrdiff_t left = (width - cropped.size.width) / 2;
    const std::ptrdiff_t top = (height - cropped.size.height) / 2;
    cropped.pixels += top * picture.strideBytes + left * BytesPerPixel(picture.layout);
    return cropped;
}

void Scale(const PixelView& picture, Surface& target) {
    const auto [width, height] = target.GetDimension();
    libyuv::ARGBScale(picture.pixels, picture.strideBytes, picture.size.width, picture.size.height,
                      target.Data(), target.StrideBytes(), width, height, libyuv::kFilterBox);
}

PixelView ViewOf(const Surface& surface) {
    return PackedView(surface.Data(), surface.GetDimension(), PixelLayout::kBgrx);
}

}  // namespace

void DrawToFill(const PixelView& picture, int zoomStep, CameraSelection selection,
                Surface& target) {
    const Dimension uprightSize = UprightSize(target.GetDimension(), selection);
    const PixelView cropped = CropToShape(picture, uprightSize, zoomStep);
    if (selection == CameraSelection::kPrimary) {
        Scale(cropped, target);
    } else {
        Surface upright(uprightSize, Surface::Kind::kOpaque);
        Scale(cropped, upright);
        libyuv::ARGBRotate(upright.Data(), upright.StrideBytes(), target.Data(),
                           target.StrideBytes(), uprightSize.width, uprightSize.height,
                           libyuv::kRotate270);
    }
    target.MarkDirty();
}

void WriteFrame(const Surface& picture, const ColorGains& gains, Base::ByteBuffer& frame) {
    ConvertToI420(ViewOf(picture), gains, frame.GetPointer());
}

result WriteStill(Surface& picture, const ColorGains& gains, Base::ByteBuffer& jpeg) {
    const auto [width, height] = picture.GetDimension();
    if (!gains.IsNeutral()) ApplyGains(gains, picture.Data(), picture.Data(), width * height);
    EncodedPicture encoded;
    const result r = EncodeJpeg(ViewOf(picture), {}, encoded);
    return Failed(r) ? r : encoded.CopyTo(jpeg);
}

}  // namespace Osp::Media
