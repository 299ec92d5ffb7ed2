#include "ui/load_picture.h"

#include <memory>

namespace Kivo {

result LoadPicture(Osp::Media::Image& decoder, const char* path, Osp::Graphics::Bitmap& bitmap) {
    const std::unique_ptr<Osp::Graphics::Bitmap> decoded(
        decoder.DecodeN(path, Osp::Media::kDecodedPixelFormatArgb));
    if (!decoded) return decoder.GetLastResult();
    bitmap = *decoded;
    return result::kSuccess;
}

}  // namespace Kivo
