#include "develop/pictures/picture_format.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <glib.h>
#include <string>

#include "develop/pictures/ppm_codec.h"
#include "osp/media/picture/jpeg_codec.h"
#include "osp/media/picture/jpeg_rows.h"
#include "osp/media/picture/png_codec.h"

namespace Kivo::Tools {

namespace {

using Osp::Graphics::Dimension;
using Osp::Media::EncodedPicture;
using Osp::Media::PixelLayout;
using Osp::Media::PixelView;

struct Extension {
    const char* text;
    PictureFormat format;
};
constexpr std::array<Extension, 4> kExtensions{{{".jpg", PictureFormat::kJpeg},
                                                {".jpeg", PictureFormat::kJpeg},
                                                {".png", PictureFormat::kPng},
                                                {".ppm", PictureFormat::kPpm}}};

constexpr int kRowsAtOnce = 64;

result ReadSizeAs(PictureFormat format, Bytes file, Dimension& size) {
    switch (format) {
        case PictureFormat::kJpeg:
            return Osp::Media::ReadJpegSize(file, size);
        case PictureFormat::kPng:
            return Osp::Media::ReadPngSize(file, size);
        case PictureFormat::kPpm:
            return ReadPpmSize(file, size);
    }
    return result::kInvalidFormat;
}

result DecodeJpegRows(Bytes file, const Dimension& size, std::uint8_t* pixels,
                      const std::function<void(int)>& rowsDone, std::string& oddity) {
    Osp::Media::JpegReader reader(file);
    Dimension ownSize;
    result r = reader.ReadHeader(ownSize);
    if (Osp::Succeeded(r) && ownSize != size) r = result::kInvalidFormat;
    if (Osp::Succeeded(r)) r = reader.Start(PixelLayout::kRgb);
    for (int y = 0; Osp::Succeeded(r) && y < size.height;) {
        const int count = std::min(kRowsAtOnce, size.height - y);
        r = reader.ReadRows(pixels + std::ptrdiff_t{3} * size.width * y, count);
        y += count;
        oddity = reader.Oddity();
        if (Osp::Succeeded(r)) rowsDone(y);
    }
    return r;
}

result DecodeAs(PictureFormat format, Bytes file, const Dimension& size, std::uint8_t* pixels,
                const std::function<void(int)>& rowsDone, std::string& oddity) {
    if (format == PictureFormat::kJpeg) {
        return DecodeJpegRows(file, size, pixels, rowsDone, oddity);
    }
    const result r = format == PictureFormat::kPng
                         ? Osp::Media::DecodePng(file, size, PixelLayout::kRgb, pixels)
                         : DecodePpm(file, size, pixels);
    if (Osp::Succeeded(r)) rowsDone(size.height);
    return r;
}

/// The picture with three bytes a pixel, in `room` if it has more.
PixelView WithoutAlpha(const PixelView& picture, Osp::Base::Block& room) {
    if (picture.layout == PixelLayout::kRgb) return picture;
    room = Osp::Base::Block(PackedSize(picture.size, PixelLayout::kRgb));
    std::uint8_t* out = room.data();
    for (int y = 0; y < picture.size.height; ++y) {
        const std::uint8_t* in = picture.pixels + std::ptrdiff_t{picture.strideBytes} * y;
        for (int x = 0; x < picture.size.width; ++x, in += 4) out = std::copy_n(in, 3, out);
    }
    return PackedView(room.data(), picture.size, PixelLayout::kRgb);
}

}  // namespace

std::optional<PictureFormat> FormatOfName(std::string_view path) {
    const std::string own = std::filesystem::path(path).extension().string();
    const auto* const found = std::ranges::find_if(kExtensions, [&own](const Extension& known) {
        return g_ascii_strcasecmp(own.c_str(), known.text) == 0;
    });
    return found == kExtensions.end() ? std::nullopt : std::optional(found->format);
}

std::optional<PictureFormat> FormatOfContent(Bytes file) {
    if (Osp::Media::IsJpeg(file)) return PictureFormat::kJpeg;
    if (Osp::Media::IsPng(file)) return PictureFormat::kPng;
    if (IsPpm(file)) return PictureFormat::kPpm;
    return std::nullopt;
}

std::vector<std::uint8_t> Metadata::Segments() const {
    std::vector<std::uint8_t> segments = exif;
    Osp::Media::AppendColourProfile(colourProfile, segments);
    return segments;
}

std::vector<std::uint8_t> ReadColourProfile(Bytes file) {
    constexpr std::string_view kColours = "RGB ";
    constexpr std::size_t kKindOffset = 16;
    std::vector<std::uint8_t> profile;
    if (Osp::Media::IsJpeg(file)) profile = Osp::Media::ReadJpegProfile(file);
    if (Osp::Media::IsPng(file)) profile = Osp::Media::ReadPngProfile(file);
    // A grey picture's profile would not suit the coloured one that is made of it.
    const bool isOfColours =
        profile.size() >= kKindOffset + kColours.size() &&
        std::equal(kColours.begin(), kColours.end(), profile.begin() + kKindOffset);
    return isOfColours ? profile : std::vector<std::uint8_t>();
}

Problem DamageInWords(result r) {
    if (r == result::kOutOfMemory) return "not enough memory";
    if (r == result::kUnsupported) {
        return "this kind of picture is not supported (12 bits a channel, lossless JPEG or CMYK)";
    }
    return "the picture is damaged or cut off";
}

Problem EncodingInWords(result r) {
    if (Osp::Succeeded(r)) return {};
    return r == result::kOutOfMemory ? DamageInWords(r) : "the picture cannot be encoded";
}

Problem ReadPictureSize(Bytes file, Dimension& size) {
    const std::optional<PictureFormat> format = FormatOfContent(file);
    if (!format) return "this is not a JPEG, PNG or binary PPM picture";
    const result r = ReadSizeAs(*format, file, size);
    if (Osp::Succeeded(r)) return {};
    if (r == result::kInvalidFormat) return "the picture's header is damaged";
    if (r != result::kOutOfRange) return DamageInWords(r);
    return "the picture is larger than " + std::to_string(Osp::Media::kMostPixels / 1'000'000) +
           " million pixels or " + std::to_string(Osp::Media::kMostPixelsASide) + " on a side";
}

result DecodePicture(Bytes file, const Dimension& size, std::uint8_t* pixels,
                     const std::function<void(int)>& rowsDone, std::string& oddity) {
    oddity.clear();
    const std::optional<PictureFormat> format = FormatOfContent(file);
    return format ? DecodeAs(*format, file, size, pixels, rowsDone, oddity)
                  : result::kInvalidFormat;
}

Problem EncodePicture(PictureFormat format, const PixelView& picture, const Metadata& metadata,
                      EncodedPicture& encoded) {
    Osp::Base::Block room;
    result r = result::kSuccess;
    switch (format) {
        case PictureFormat::kJpeg:
            r = Osp::Media::EncodeJpeg(picture, metadata.Segments(), encoded);
            break;
        case PictureFormat::kPng:
            r = Osp::Media::EncodePng(WithoutAlpha(picture, room), metadata.colourProfile, encoded);
            break;
        case PictureFormat::kPpm:
            EncodePpm(WithoutAlpha(picture, room), encoded);
            break;
    }
    return EncodingInWords(r);
}

}  // namespace Kivo::Tools
