#include "osp/media/camera/camera_pictures.h"

#include <libyuv/rotate_argb.h>
#include <libyuv/scale_argb.h>

#include "osp/media/camera/framing.h"
#include "osp/media/camera/i420.h"
#include "osp/media/picture/jpeg_codec.h"

namespace Osp::Media {

namespace {

using Graphics::Dimension;
using Graphics::Surface;

PixelView CropToShape(const PixelView& picture, const Dimension& target, int zoomStep) {
    const Graphics::Rectangle middle = MiddleOfShape(picture.size, target, zoomStep);
    PixelView cropped = picture;
    cropped.size = middle.Size();
    cropped.pixels += static_cast<std::ptrdiff_t>(middle.y) * picture.strideBytes +
                      static_cast<std::ptrdiff_t>(middle.x) * BytesPerPixel(picture.layout);
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
