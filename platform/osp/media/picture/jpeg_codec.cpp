#include "osp/media/picture/jpeg_codec.h"

#include <algorithm>
#include <string_view>

#include "osp/media/picture/jpeg_rows.h"

namespace Osp::Media {

bool IsJpeg(std::span<const std::uint8_t> data) {
    constexpr std::uint8_t kStart[] = {0xFF, 0xD8};
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

void AppendSegment(int number, std::span<const std::uint8_t> content,
                   std::vector<std::uint8_t>& segments) {
    constexpr std::size_t kLongest = 0xFFFF;
    const std::size_t length = content.size() + 2;  // counts its own two bytes
    if (length > kLongest) return;
    const std::uint8_t head[] = {0xFF, static_cast<std::uint8_t>(0xE0 + number),
                                 static_cast<std::uint8_t>(length >> 8),
                                 static_cast<std::uint8_t>(length)};
    segments.insert(segments.end(), std::begin(head), std::end(head));
    segments.insert(segments.end(), content.begin(), content.end());
}

void AppendColourProfile(std::span<const std::uint8_t> profile,
                         std::vector<std::uint8_t>& segments) {
    constexpr std::string_view kStart{"ICC_PROFILE\0", 12};
    constexpr std::size_t kMostInSegment = 0xFFFF - 2 - kStart.size() - 2;  // number and count
    const std::size_t count = (profile.size() + kMostInSegment - 1) / kMostInSegment;
    if (count > 0xFF) return;  // more cannot be numbered
    for (std::size_t number = 1; number <= count; ++number) {
        const auto part = profile.first(std::min(profile.size(), kMostInSegment));
        profile = profile.subspan(part.size());
        std::vector<std::uint8_t> content(kStart.begin(), kStart.end());
        content.push_back(static_cast<std::uint8_t>(number));
        content.push_back(static_cast<std::uint8_t>(count));
        content.insert(content.end(), part.begin(), part.end());
        AppendSegment(2, content, segments);
    }
}

std::vector<std::uint8_t> ReadJpegProfile(std::span<const std::uint8_t> data) {
    JpegReader reader(data);
    Graphics::Dimension ignored;
    return Failed(reader.ReadHeader(ignored)) ? std::vector<std::uint8_t>()
                                              : reader.ColourProfile();
}

}  // namespace Osp::Media
