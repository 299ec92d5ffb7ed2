#include "osp/media/live/picture_converter.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <libyuv/convert.h>
#include <libyuv/convert_argb.h>
#include <libyuv/rotate.h>
#include <libyuv/scale.h>

#include "osp/media/camera/camera_pictures.h"
#include "osp/media/camera/framing.h"
#include "osp/media/camera/i420.h"
#include "osp/media/camera/white_balance.h"
#include "osp/media/picture/jpeg_codec.h"

// The order of the steps is by cost: the part that is wanted is taken first, unpacked, scaled to
// its last size, and only then turned and coloured. A JPEG is decoded at the smallest size that
// still fills the result, which saves three quarters of the work in most previews.

namespace Osp::Media {

namespace {

using Base::ByteBuffer;
using Graphics::Dimension;
using Graphics::Rectangle;

PlanarView PlanesOf(const VideoPicture& picture) {
    return {picture.planes, {picture.size.width & ~1, picture.size.height & ~1}, false};
}

// Bilinear reads four pixels for one, so that beyond half the size pixels would be skipped.
void Scale(const PlanarView& source, PlanarPicture& target) {
    const auto& [y, cb, cr] = source.planes;
    const Dimension& size = target.Size();
    const bool isFar = source.size.width > 2 * size.width || source.size.height > 2 * size.height;
    libyuv::I420Scale(y.data, y.strideBytes, cb.data, cb.strideBytes, cr.data, cr.strideBytes,
                      source.size.width, source.size.height, target.Plane(0), target.Stride(0),
                      target.Plane(1), target.Stride(1), target.Plane(2), target.Stride(2),
                      size.width, size.height,
                      isFar ? libyuv::kFilterBox : libyuv::kFilterBilinear);
}

// The front sensor is mounted a quarter turn: what it delivers stands on its side.
void Turn(const PlanarView& upright, PlanarPicture& target) {
    const auto& [y, cb, cr] = upright.planes;
    target.Fit({upright.size.height, upright.size.width});
    libyuv::I420Rotate(y.data, y.strideBytes, cb.data, cb.strideBytes, cr.data, cr.strideBytes,
                       target.Plane(0), target.Stride(0), target.Plane(1), target.Stride(1),
                       target.Plane(2), target.Stride(2), upright.size.width, upright.size.height,
                       libyuv::kRotate270);
}

void ToColours(const PlanarView& view, Base::Block& colours) {
    const auto& [y, cb, cr] = view.planes;
    const auto [width, height] = view.size;
    colours.Fit(PackedSize(view.size, PixelLayout::kBgrx));
    const auto convert = view.isFullRange ? libyuv::J420ToARGB : libyuv::I420ToARGB;
    convert(y.data, y.strideBytes, cb.data, cb.strideBytes, cr.data, cr.strideBytes, colours.data(),
            4 * width, width, height);
}

/// 16 + value * 219 / 255 for luma, 128 + (value - 128) * 224 / 255 for chroma, rounded.
void CopyToVideoRange(const VideoPlane& plane, const Dimension& size, bool isLuma,
                      std::uint8_t* target) {
    const unsigned factor = isLuma ? 56284 : 57569;  // in 65536ths
    const unsigned offset = isLuma ? (16U << 16) + 32768 : (128U << 16) - 128 * 57569 + 32768;
    for (int y = 0; y < size.height; ++y) {
        const std::uint8_t* const row =
            plane.data + static_cast<std::ptrdiff_t>(y) * plane.strideBytes;
        for (int x = 0; x < size.width; ++x) {
            target[x] = static_cast<std::uint8_t>((row[x] * factor + offset) >> 16);
        }
        target += size.width;
    }
}

void CopyFrame(const PlanarView& view, std::uint8_t* frame) {
    for (std::size_t i = 0; i < view.planes.size(); ++i) {
        const bool isLuma = i == 0;
        const Dimension size =
            isLuma ? view.size : Dimension{view.size.width / 2, view.size.height / 2};
        const VideoPlane& plane = view.planes[i];
        if (view.isFullRange) {
            CopyToVideoRange(plane, size, isLuma, frame);
        } else {
            libyuv::CopyPlane(plane.data, plane.strideBytes, frame, size.width, size.width,
                              size.height);
        }
        frame += static_cast<std::ptrdiff_t>(size.width) * size.height;
    }
}

}  // namespace

// The part of the picture that will be seen, in three planes; larger than the result or not, as the
// device has it.
bool PictureConverter::Unpack(const VideoPicture& picture, const Dimension& upright, int zoomStep,
                              PlanarView& view) {
    if (picture.format == VideoFormat::kMjpeg) {
        return UnpackMjpeg(picture, upright, zoomStep, view);
    }
    if (picture.size.width < 2 || picture.size.height < 2) return false;
    const PlanarView whole = PlanesOf(picture);
    const Rectangle part = MiddleOfShape(whole.size, upright, zoomStep);
    if (picture.format == VideoFormat::kI420) {
        view = whole.Part(part);
        return true;
    }
    const Rectangle seen = WholeSamples(part, whole.size);
    const std::ptrdiff_t left = seen.x;
    const std::ptrdiff_t top = seen.y;
    const auto [width, height] = seen.Size();
    const auto& planes = picture.planes;
    unpacked_.Fit(seen.Size());
    if (picture.format == VideoFormat::kNv12) {
        libyuv::NV12ToI420(
            planes[0].data + top * planes[0].strideBytes + left, planes[0].strideBytes,
            planes[1].data + top / 2 * planes[1].strideBytes + left, planes[1].strideBytes,
            unpacked_.Plane(0), unpacked_.Stride(0), unpacked_.Plane(1), unpacked_.Stride(1),
            unpacked_.Plane(2), unpacked_.Stride(2), width, height);
    } else {
        libyuv::YUY2ToI420(planes[0].data + top * planes[0].strideBytes + 2 * left,
                           planes[0].strideBytes, unpacked_.Plane(0), unpacked_.Stride(0),
                           unpacked_.Plane(1), unpacked_.Stride(1), unpacked_.Plane(2),
                           unpacked_.Stride(2), width, height);
    }
    view = unpacked_.View(false);
    return true;
}

bool PictureConverter::UnpackMjpeg(const VideoPicture& picture, const Dimension& upright,
                                   int zoomStep, PlanarView& view) {
    Dimension size;
    if (!ReadMjpegSize(picture.mjpeg, size)) return false;
    const Rectangle part = MiddleOfShape(size, upright, zoomStep);
    int shrink = 1;
    while (shrink < 8 && part.width / (2 * shrink) >= upright.width &&
           part.height / (2 * shrink) >= upright.height) {
        shrink *= 2;
    }
    PlanarView whole;
    if (!decoder_.Decode(picture.mjpeg, shrink, whole)) return false;
    view = whole.Part(MiddleOfShape(whole.size, upright, zoomStep));
    return true;
}

/// The seen part at the upright form of `size`, for this camera's subject.
bool PictureConverter::FillUpright(const VideoPicture& picture, const Dimension& size, int zoomStep,
                                   PlanarView& view) {
    const Dimension upright = UprightSize(size, selection_);
    if (!Unpack(picture, upright, zoomStep, view)) return false;
    if (view.size != upright) {
        const bool isFullRange = view.isFullRange;
        scaled_.Fit(upright);
        Scale(view, scaled_);
        view = scaled_.View(isFullRange);
    }
    if (selection_ == CameraSelection::kSecondary) {
        const bool isFullRange = view.isFullRange;
        Turn(view, turned_);
        view = turned_.View(isFullRange);
    }
    return true;
}

bool PictureConverter::MakeFrame(const VideoPicture& picture, const StreamSettings& settings,
                                 ByteBuffer& frame) {
    PlanarView view;
    if (!FillUpright(picture, settings.previewSize, settings.zoomStep, view)) return false;
    ByteBuffer made;
    if (Failed(made.Construct(static_cast<int>(I420Bytes(settings.previewSize))))) return false;
    const ColorGains gains = GainsOf(settings.whiteBalance);
    if (gains.IsNeutral()) {
        CopyFrame(view, made.GetPointer());
    } else {
        ToColours(view, colours_);
        ConvertToI420(PackedView(colours_.data(), view.size, PixelLayout::kBgrx), gains,
                      made.GetPointer());
    }
    frame = std::move(made);
    return true;
}

/// Whether the device's JPEG is what is wanted, byte for byte, and whole, which only decoding
/// tells.
bool PictureConverter::IsDeliverable(const VideoPicture& picture, const StreamSettings& settings) {
    Dimension size;
    PlanarView view;
    return picture.format == VideoFormat::kMjpeg && selection_ == CameraSelection::kPrimary &&
           settings.zoomStep == 0 && GainsOf(settings.whiteBalance).IsNeutral() &&
           ReadMjpegSize(picture.mjpeg, size) && size == settings.stillSize &&
           decoder_.Decode(picture.mjpeg, 8, view);
}

bool PictureConverter::MakeStill(const VideoPicture& picture, const StreamSettings& settings,
                                 ByteBuffer& jpeg) {
    if (IsDeliverable(picture, settings)) {
        ByteBuffer made;
        if (Failed(made.Construct(static_cast<int>(picture.mjpeg.size())))) return false;
        std::ranges::copy(picture.mjpeg, made.GetPointer());
        jpeg = std::move(made);
        return true;
    }
    PlanarView view;
    if (!FillUpright(picture, settings.stillSize, settings.zoomStep, view)) return false;
    ToColours(view, colours_);
    const auto [width, height] = view.size;
    const ColorGains gains = GainsOf(settings.whiteBalance);
    if (!gains.IsNeutral()) ApplyGains(gains, colours_.data(), colours_.data(), width * height);
    EncodedPicture encoded;
    return Succeeded(EncodeJpeg(PackedView(colours_.data(), view.size, PixelLayout::kBgrx), {},
                                encoded)) &&
           Succeeded(encoded.CopyTo(jpeg));
}

}  // namespace Osp::Media
