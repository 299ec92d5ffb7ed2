// Decoding and encoding of pictures.
#pragma once

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/graphics/bitmap.h>
#include <osp/media/image_format.h>

namespace Osp::Media {

/// 32 bits a pixel with alpha, the only pixel format that files are decoded to.
constexpr int kDecodedPixelFormatArgb = 2;

/// Loop thread only. The methods ending in N return a new object, the caller's, or null, and leave
/// the reason in GetLastResult. Everything can be kOutOfMemory.
class Image {
  public:
    /// Always succeeds; there is nothing to open.
    result Construct();

    /// The picture in a file, PNG or JPEG by its content; `path` is virtual ("/Res/..."). The
    /// pixels of a PNG are read when they are first drawn, its header here. kFileNotFound,
    /// kInvalidFormat (also for a picture of more than 32,767 pixels a side or 64 million pixels,
    /// and for one that ends early, as far as that shows before the pixels are read),
    /// kInvalidArgument for another `pixelFormat` than kDecodedPixelFormatArgb.
    Graphics::Bitmap* DecodeN(const Base::String& path, int pixelFormat);

    /// The same, upright as its EXIF says, and scaled down so that it lies within the bounds,
    /// which are positive, with its own proportions; a small one keeps its size. A large JPEG takes
    /// a fraction of the time. kInvalidArgument for other bounds.
    Graphics::Bitmap* DecodeN(const Base::String& path, int pixelFormat, int mostWidth,
                              int mostHeight);

    /// The picture in `data`. kUnsupported for another source format than kJpeg, kInvalidFormat as
    /// above.
    Graphics::Bitmap* DecodeN(const Base::ByteBuffer& data, ImageFormat sourceFormat,
                              Graphics::BitmapPixelFormat pixelFormat);

    /// A whole BMP file (kBmp) or JPEG (kJpeg, as EncodeToFile without metadata) of exactly the
    /// buffer's capacity. kInvalidArgument for an unconstructed bitmap, kUnsupported for other
    /// formats.
    Base::ByteBuffer* EncodeToBufferN(const Graphics::Bitmap& bitmap, ImageFormat format);

    /// Writes a JPEG (quality 95, 4:2:0) with EXIF. The file is there whole when this succeeds, and
    /// a failure leaves what was there before. With `overwrite`, an older file is kept beside the
    /// new one under another name; without, it is kKeyAlreadyExists, even if another program put it
    /// there just now. kInvalidArgument for an unconstructed bitmap, kUnsupported for another
    /// format than kJpeg. Other codes are those of the storage: kStorageFull, kPermissionDenied,
    /// kFileNotFound, kIo.
    result EncodeToFile(const Graphics::Bitmap& bitmap, ImageFormat format,
                        const Base::String& path, bool overwrite);

    /// What the next EncodeToFile, and only that, records as the picture's description.
    void SetDescription(const Base::String& description) { description_ = description; }

    /// The outcome of the last method ending in N.
    result GetLastResult() const { return lastResult_; }

  private:
    Base::String description_;
    result lastResult_ = result::kSuccess;
};

}  // namespace Osp::Media
