// Receives pictures that were decoded in the background.
#pragma once

#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/graphics/bitmap.h>

namespace Osp::Media {

class IImageDecoderListener {
  public:
    virtual ~IImageDecoderListener() = default;
    /// From the loop. `bitmap` is the receiver's, and null when decoding failed with `r`.
    virtual void OnImageDecodedN(const Base::String& path, Graphics::Bitmap* bitmap, result r) = 0;
};

}  // namespace Osp::Media
