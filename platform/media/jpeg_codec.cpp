#include "media/jpeg_codec.h"

#include <algorithm>

#include "media/jpeg_rows.h"

namespace Osp::Media {

bool IsJpeg(std::span<const std::uint8_t> data) {
    constexpr std::uint8_t kStart[] = {0xFF, 0xD8, 0xFF};
    return data.size() >= std::size(kStart) && std::equal(kStart, std::end(kStart), data.begin());
}

result ReadJpegSize(std::span<const std::uint8_t> data, Graphics::Dimension& size) {
    return JpegReader(data).ReadHeader(size);
}

result DecodeJpeg(std::span<const std::uint8_t> data, PixelLayout layout, Base::Block& pixels,
                  Graphics::Dimension& size) {
    JpegReader reader(data);
    result r = reader.ReadHeader(size);
    if (Failed(r)) return r;
    pixels.Fit(PackedSize(size, layout));
    r = reader.Start(layout);
    return Failed(r) ? r : reader.ReadRows(pixels.data(), size.height);
}

result EncodeJpeg(const PixelView& picture, std::span<const std::uint8_t> metadata,
                  EncodedPicture& encoded) {
    JpegWriter writer(encoded);
    const result r = writer.Start(picture.size, picture.layout, metadata);
    return Failed(r) ? r
                     : writer.WriteRows(picture.pixels, picture.strideBytes, picture.size.height);
}

}  // namespace Osp::Media
