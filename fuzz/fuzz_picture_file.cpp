// Any bytes as a picture file: size, pixels, and what it says about itself.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "frame.h"
#include "media/exif.h"
#include "media/jpeg_codec.h"
#include "picture_format.h"

namespace {

// Larger pictures take long and find nothing more.
constexpr long long kMostPixels = 256 * 1024;

void Decode(std::span<const std::uint8_t> file, const Osp::Graphics::Dimension& size) {
    Osp::Base::Block pixels(Osp::Media::PackedSize(size, Osp::Media::PixelLayout::kRgb));
    int rowsDone = 0;
    const bool isWhole = Kivo::Tools::DecodePicture(file, size, pixels.data(), [&](int rows) {
        if (rows <= rowsDone || rows > size.height) std::abort();
        rowsDone = rows;
    });
    if (isWhole && rowsDone != size.height) std::abort();
    Kivo::Tools::Frame frame;
    if (!frame.Load(file, false).empty() || frame.WaitForAll() != isWhole) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t count) {
    const std::span<const std::uint8_t> file(data, count);
    Osp::Graphics::Dimension size;
    if (Kivo::Tools::ReadPictureSize(file, size).empty()) {
        if (!Osp::Media::IsAcceptableSize(size.width, size.height)) std::abort();
        const long long pixels = static_cast<long long>(size.width) * size.height;
        if (pixels <= kMostPixels) Decode(file, size);
    }
    Osp::Media::ExifInfo info = Osp::Media::ReadExif(file).value_or(Osp::Media::ExifInfo{});
    info.size = size;
    auto segments = Osp::Media::RebuildExifSegment(file, info);
    if (segments.size() > 0xFFFF + 2) std::abort();
    Osp::Media::AppendColourProfile(file, segments);
    return 0;
}
