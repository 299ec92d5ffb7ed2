#include <memory>
#include <utility>

#include <osp/media/image_decoder.h>

#include "osp/base/background.h"
#include "osp/base/event_loop.h"
#include "osp/graphics/access.h"
#include "osp/graphics/bitmap_pixels.h"
#include "osp/io/storage_map.h"
#include "osp/media/picture/picture_within.h"

namespace Osp::Media {

namespace {

using Graphics::Access;
using Graphics::BitmapPixels;

/// Written by the worker, then read by the loop.
struct Decoded {
    Base::Block rgba;
    Graphics::Dimension size;
    result outcome = result::kOutOfMemory;  // what a job that was given up leaves
};

void Deliver(IImageDecoderListener& listener, const Base::String& path, Decoded& decoded) {
    std::unique_ptr<Graphics::Bitmap> bitmap;
    if (Succeeded(decoded.outcome)) {
        bitmap = std::make_unique<Graphics::Bitmap>(Access::MakeBitmap(
            std::make_shared<BitmapPixels>(decoded.size, std::move(decoded.rgba))));
    }
    listener.OnImageDecodedN(path, bitmap.release(), decoded.outcome);
}

}  // namespace

ImageDecoder::~ImageDecoder() = default;

result ImageDecoder::Construct(IImageDecoderListener& listener) {
    if (listener_) return result::kInvalidState;
    listener_ = std::make_shared<IImageDecoderListener*>(&listener);
    return result::kSuccess;
}

result ImageDecoder::Start(const Base::String& path, const Graphics::Dimension& most) {
    if (!listener_) return result::kInvalidState;
    if (most.width <= 0 || most.height <= 0) return result::kInvalidArgument;
    std::string realPath;
    const result r = Io::StorageMap::Current().Resolve(path, Io::Access::kRead, realPath);
    if (Failed(r)) return r;
    auto decoded = std::make_shared<Decoded>();
    Base::RunInBackground(
        [decoded, realPath, most] {
            decoded->outcome = DecodeWithin(realPath, most, decoded->rgba, decoded->size);
        },
        // An event of the application's, which a message box holds back.
        [decoded, path, listener = std::weak_ptr(listener_)] {
            Base::EventLoop::Current().Post(Base::EventClass::kApplication, [=] {
                if (const auto alive = listener.lock()) Deliver(**alive, path, *decoded);
            });
        });
    return result::kSuccess;
}

result ImageDecoder::Cancel() {
    if (listener_) listener_ = std::make_shared<IImageDecoderListener*>(*listener_);
    return result::kSuccess;
}

}  // namespace Osp::Media
