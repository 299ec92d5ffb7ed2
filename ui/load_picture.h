// Pictures of the package.
#pragma once

#include <osp/base/result.h>
#include <osp/graphics/bitmap.h>
#include <osp/media/image.h>

namespace Kivo {

/// Stores the picture at the virtual path in `bitmap`; the decoder's failure leaves that alone.
result LoadPicture(Osp::Media::Image& decoder, const char* path, Osp::Graphics::Bitmap& bitmap);

}  // namespace Kivo
