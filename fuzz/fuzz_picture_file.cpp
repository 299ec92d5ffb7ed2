// Any bytes as a picture file: size, pixels, and what it says about itself.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "develop/pictures/frame.h"
#include "develop/pictures/picture_format.h"
#include "osp/media/picture/exif.h"

namespace {

// Larger pictures take long and find nothing more.
constexpr long long kMostPixels = 256 * 1024;

void Decode(std::span<const std::uint8_t> file, const Osp::Graphics::Dimension& size) {
    Osp::Base::Block pixels(Osp::Media::PackedSize(size, Osp::Media::PixelLayout::kRgb));
    int rowsDone = 0;
    std::string oddity;
    const auto count = [&](int rows) {
        if (rows <= rowsDone || rows > size.height) std::abort();
        rowsDone = rows;
    };
    const result r = Kivo::Tools::DecodePicture(file, size, pixels.data(), count, oddity);
    const bool isWhole = Osp::Succeeded(r);
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
    Kivo::Tools::Metadata metadata{Osp::Media::RebuildExifSegment(file, info),
                                   Kivo::Tools::ReadColourProfile(file)};
    if (metadata.exif.size() > 0xFFFF + 2) std::abort();
    if (metadata.Segments().size() < metadata.colourProfile.size()) std::abort();
    return 0;
}
