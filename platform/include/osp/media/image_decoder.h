// Decoding of pictures ahead of the time when they are needed.
#pragma once

#include <memory>

#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/graphics/dimension.h>
#include <osp/media/i_image_decoder_listener.h>

namespace Osp::Media {

/// Decodes in the background, while the application goes on. Loop thread only. Deleting it drops
/// what is under way.
class ImageDecoder {
  public:
    ImageDecoder() = default;
    ~ImageDecoder();
    ImageDecoder(const ImageDecoder&) = delete;
    ImageDecoder& operator=(const ImageDecoder&) = delete;

    /// `listener` is not owned and outlives the decoder. kInvalidState when constructed already.
    result Construct(IImageDecoderListener& listener);

    /// Begins to decode a file as Image::DecodeN does within bounds; the listener gets one call,
    /// never from inside this one. Where the path is not a virtual one or the bounds are not
    /// positive, the failure is returned and the listener not called; kInvalidState before
    /// Construct.
    result Start(const Base::String& path, const Graphics::Dimension& most);
    /// The listener hears no more of what was begun. Always succeeds.
    result Cancel();

  private:
    std::shared_ptr<IImageDecoderListener*> listener_;  // weakly held by what is under way
};

}  // namespace Osp::Media
