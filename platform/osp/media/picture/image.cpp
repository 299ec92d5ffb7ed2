#include <algorithm>
#include <libyuv/planar_functions.h>
#include <memory>
#include <utility>

#include <osp/media/image.h>

#include "osp/base/event_loop.h"
#include "osp/base/out_of_memory.h"
#include "osp/base/trace.h"
#include "osp/graphics/access.h"
#include "osp/graphics/bitmap_pixels.h"
#include "osp/io/safe_file.h"
#include "osp/io/storage_map.h"
#include "osp/media/picture/bmp_codec.h"
#include "osp/media/picture/exif.h"
#include "osp/media/picture/jpeg_codec.h"
#include "osp/media/picture/picture_file.h"
#include "osp/media/picture/picture_within.h"
#include "osp/media/picture/png_codec.h"

namespace Osp::Media {

namespace {

using Base::ByteBuffer;
using Base::OrOutOfMemory;
using Graphics::Access;
using Graphics::Bitmap;
using Graphics::BitmapPixels;
using Graphics::Dimension;

std::unique_ptr<Bitmap> FromRgba(const Dimension& size, Base::Block rgba) {
    return std::make_unique<Bitmap>(
        Access::MakeBitmap(std::make_shared<BitmapPixels>(size, std::move(rgba))));
}

result DecodePngLazily(const std::string& realPath, std::unique_ptr<Bitmap>& bitmap) {
    Dimension size;
    const result r = ReadPngSize(realPath, size);
    if (Failed(r)) return r;
    BitmapPixels::Loader loader = [realPath, size](Graphics::Surface& surface) {
        std::uint8_t* const pixels = surface.Data();
        const int stride = surface.StrideBytes();
        if (Failed(DecodePng(realPath, size, PixelLayout::kBgrx, pixels))) {
            std::fill_n(pixels, PackedSize(size, PixelLayout::kBgrx), std::uint8_t{0});
            return false;
        }
        libyuv::ARGBAttenuate(pixels, stride, pixels, stride, size.width, size.height);
        return true;
    };
    bitmap = std::make_unique<Bitmap>(
        Access::MakeBitmap(std::make_shared<BitmapPixels>(size, std::move(loader))));
    return result::kSuccess;
}

result DecodeFile(const std::string& realPath, std::unique_ptr<Bitmap>& bitmap) {
    FileKind kind{};
    result r = ReadFileKind(realPath, kind);
    if (Failed(r)) return r;
    if (kind == FileKind::kPng) return DecodePngLazily(realPath, bitmap);
    Base::Block rgba;
    Dimension size;
    r = DecodePicture(realPath, PixelLayout::kRgba, rgba, size);
    if (Succeeded(r)) bitmap = FromRgba(size, std::move(rgba));
    return r;
}

PixelView ViewOf(const Bitmap& bitmap) {
    return PackedView(Access::Pixels(bitmap)->Rgba(), Access::Pixels(bitmap)->GetDimension(),
                      PixelLayout::kRgba);
}

result EncodeToBuffer(const Bitmap& bitmap, ImageFormat format, ByteBuffer& buffer) {
    if (Access::Pixels(bitmap) == nullptr) return result::kInvalidArgument;
    if (format == ImageFormat::kBmp) {
        const int size = BmpFileBytes(Access::Pixels(bitmap)->GetDimension());
        if (size == 0) return result::kInvalidArgument;
        const result r = buffer.Construct(size);
        if (Failed(r)) return r;
        EncodeBmp(ViewOf(bitmap), buffer.GetPointer());
        Base::Trace::Mark("bmp-made");
        return r;
    }
    if (format != ImageFormat::kJpeg) return result::kUnsupported;
    EncodedPicture encoded;
    const result r = EncodeJpeg(ViewOf(bitmap), {}, encoded);
    return Failed(r) ? r : encoded.CopyTo(buffer);
}

result EncodePhotograph(const Bitmap& bitmap, const Base::String& description,
                        EncodedPicture& encoded) {
    const PixelView view = ViewOf(bitmap);
    ExifInfo info =
        DescribePhotograph(description.ToUtf8(), view.size, Base::EventLoop::Current().GetClock());
    info.software = Io::StorageMap::Current().GetProduct().name;
    return EncodeJpeg(view, BuildExifSegment(info), encoded);
}

}  // namespace

result Image::Construct() {
    return result::kSuccess;
}

Bitmap* Image::DecodeN(const Base::String& path, int pixelFormat) {
    std::unique_ptr<Bitmap> bitmap;
    std::string realPath;
    lastResult_ = result::kInvalidArgument;
    if (pixelFormat != kDecodedPixelFormatArgb) return nullptr;
    lastResult_ = Io::StorageMap::Current().Resolve(path, Io::Access::kRead, realPath);
    if (Succeeded(lastResult_)) {
        lastResult_ = OrOutOfMemory([&] { return DecodeFile(realPath, bitmap); });
    }
    return bitmap.release();
}

Bitmap* Image::DecodeN(const Base::String& path, int pixelFormat, int mostWidth, int mostHeight) {
    lastResult_ = result::kInvalidArgument;
    if (pixelFormat != kDecodedPixelFormatArgb || mostWidth <= 0 || mostHeight <= 0) return nullptr;
    std::unique_ptr<Bitmap> bitmap;
    std::string realPath;
    lastResult_ = Io::StorageMap::Current().Resolve(path, Io::Access::kRead, realPath);
    if (Failed(lastResult_)) return nullptr;
    lastResult_ = OrOutOfMemory([&] {
        Base::Block rgba;
        Dimension size;
        const result r = DecodeWithin(realPath, {mostWidth, mostHeight}, rgba, size);
        if (Succeeded(r)) bitmap = FromRgba(size, std::move(rgba));
        return r;
    });
    return bitmap.release();
}

Bitmap* Image::DecodeN(const ByteBuffer& data, ImageFormat sourceFormat,
                       Graphics::BitmapPixelFormat pixelFormat) {
    lastResult_ = result::kUnsupported;
    if (sourceFormat != ImageFormat::kJpeg ||
        pixelFormat != Graphics::BitmapPixelFormat::kArgb8888) {
        return nullptr;
    }
    Base::Trace::Mark("decode-begun");
    std::unique_ptr<Bitmap> bitmap;
    lastResult_ = OrOutOfMemory([&] {
        Base::Block rgba;
        Dimension size;
        const result r = DecodeJpeg(data.Bytes(), PixelLayout::kRgba, rgba, size);
        if (Succeeded(r)) bitmap = FromRgba(size, std::move(rgba));
        return r;
    });
    if (bitmap) Base::Trace::Mark("decode-done");
    return bitmap.release();
}

ByteBuffer* Image::EncodeToBufferN(const Bitmap& bitmap, ImageFormat format) {
    auto buffer = std::make_unique<ByteBuffer>();
    lastResult_ = OrOutOfMemory([&] { return EncodeToBuffer(bitmap, format, *buffer); });
    return Succeeded(lastResult_) ? buffer.release() : nullptr;
}

result Image::EncodeToFile(const Bitmap& bitmap, ImageFormat format, const Base::String& path,
                           bool overwrite) {
    Base::Trace::Mark("encode-begun");
    const Base::String description = std::exchange(description_, {});
    if (Access::Pixels(bitmap) == nullptr) return result::kInvalidArgument;
    if (format != ImageFormat::kJpeg) return result::kUnsupported;
    std::string realPath;
    const result r = Io::StorageMap::Current().Resolve(path, Io::Access::kWrite, realPath);
    if (Failed(r)) return r;
    return OrOutOfMemory([&] {
        EncodedPicture encoded;
        const result coded = EncodePhotograph(bitmap, description, encoded);
        if (Failed(coded)) return coded;
        Base::Trace::Mark("encode-done");
        const result written = Io::WriteFileSafely(
            realPath, encoded.Bytes(),
            {.replace = overwrite ? Io::Replace::kKeepOld : Io::Replace::kRefuse,
             .modifiedMs = Io::NewFileDateMs()});
        Base::Trace::Mark("file-synced");
        return written;
    });
}

}  // namespace Osp::Media
