#include "osp/media/picture/encoded_picture.h"

#include <algorithm>

namespace Osp::Media {

result EncodedPicture::CopyTo(Base::ByteBuffer& buffer) const {
    const result r = buffer.Construct(static_cast<int>(sizeBytes));
    if (Succeeded(r)) std::ranges::copy(Bytes(), buffer.GetPointer());
    return r;
}

void EncodedPicture::Reserve(std::size_t mostBytes) {
    if (block.size() < mostBytes) block.Fit(mostBytes);
}

}  // namespace Osp::Media
