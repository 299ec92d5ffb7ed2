// A picture of 32-bit pixels.
#pragma once

#include <memory>

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>
#include <osp/graphics/dimension.h>

namespace Osp::Graphics {

/// 3: 32 bits a pixel, with alpha; byte buffers hold R, G, B, A.
enum class BitmapPixelFormat { kArgb8888 = 3 };

class Access;
class BitmapPixels;

/// Two-phase; never changes once constructed, and copies of a constructed bitmap share its pixels.
/// Loop thread only.
class Bitmap {
  public:
    Bitmap();
    ~Bitmap();

    /// From width x height x 4 bytes R, G, B, A, rows top to bottom without gaps.
    /// kInvalidArgument, leaving the bitmap as it was, when the sizes are not positive, do not
    /// agree, or exceed 32,767 pixels a side; likewise kOutOfMemory. The buffer is copied; one
    /// that is handed over is taken, except with kInvalidArgument.
    result Construct(const Base::ByteBuffer& buffer, const Dimension& dimension,
                     BitmapPixelFormat format);
    result Construct(Base::ByteBuffer&& buffer, const Dimension& dimension,
                     BitmapPixelFormat format);
    /// A copy of `original`, scaled and filtered as a canvas would do it, for one that is drawn at
    /// that size time and again. kInvalidArgument, leaving the bitmap as it was, when `original` is
    /// not constructed or a side is not 1 to 32,767 pixels; likewise kOutOfMemory.
    result Construct(const Bitmap& original, const Dimension& dimension);

    /// In pixels; 0 before construction.
    int GetWidth() const;
    int GetHeight() const;

  private:
    friend class Access;

    explicit Bitmap(std::shared_ptr<const BitmapPixels> pixels);

    std::shared_ptr<const BitmapPixels> pixels_;
};

}  // namespace Osp::Graphics
