// A JPEG is scaled in two steps: the decoder leaves out what no coarser picture needs, in eighths,
// down to the last size that is not below the wanted one; a filter does the rest. So a photograph
// of many times the size of the screen takes little more time and memory than one of its size, and
// the filter never has to bridge more than a factor of two but from the coarsest eighth.
//
// All of that happens in the picture as it is stored. Only the small picture is turned, which is
// why the bounds are turned first.
#include "osp/media/picture/picture_within.h"

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <libyuv/scale_argb.h>
#include <utility>

#include "osp/base/owner.h"
#include "osp/media/picture/exif.h"
#include "osp/media/picture/jpeg_rows.h"
#include "osp/media/picture/picture_file.h"
#include "osp/media/picture/png_codec.h"
#include "osp/media/picture/upright.h"

namespace Osp::Media {

namespace {

using Base::Block;
using Graphics::Dimension;

constexpr int kWhole = 8;  // eighths

Dimension Transposed(const Dimension& size) {
    return {size.height, size.width};
}

/// As libjpeg rounds.
Dimension AtEighths(const Dimension& size, int eighths) {
    return {(size.width * eighths + kWhole - 1) / kWhole,
            (size.height * eighths + kWhole - 1) / kWhole};
}

int EighthsFor(const Dimension& size, const Dimension& wanted) {
    int eighths = 1;
    while (eighths < kWhole) {
        const auto [width, height] = AtEighths(size, eighths);
        if (width >= wanted.width && height >= wanted.height) break;
        ++eighths;
    }
    return eighths;
}

int OrientationIn(std::span<const std::uint8_t> file) {
    const auto exif = ReadExif(file);
    return exif ? exif->orientation : 1;
}

/// Both hold R, G, B, A, whatever the library calls it.
void Scale(Block& pixels, Dimension& size, const Dimension& wanted) {
    if (size == wanted) return;
    Block scaled(PackedSize(wanted, PixelLayout::kRgba));
    libyuv::ARGBScale(pixels.data(), size.width * 4, size.width, size.height, scaled.data(),
                      wanted.width * 4, wanted.width, wanted.height, libyuv::kFilterBox);
    pixels = std::move(scaled);
    size = wanted;
}

void TurnUpright(Block& pixels, Dimension& size, int orientation) {
    if (IsUpright(orientation)) return;
    Block upright(pixels.size());
    TurnUpright(PackedView(pixels.data(), size, PixelLayout::kRgba), orientation, upright.data());
    pixels = std::move(upright);
    if (IsTransposed(orientation)) size = Transposed(size);
}

result DecodeJpegWithin(const std::string& path, const Dimension& most, Block& rgba,
                        Dimension& size) {
    EncodedPicture file;
    result r = ReadPictureBytes(path, file);
    if (Failed(r)) return r;
    JpegReader reader(file.Bytes());
    Dimension stored;
    r = reader.ReadHeader(stored);
    if (Failed(r)) return r;
    const int orientation = OrientationIn(file.Bytes());
    const Dimension wanted =
        SizeWithin(stored, IsTransposed(orientation) ? Transposed(most) : most);
    const int eighths = EighthsFor(stored, wanted);
    size = AtEighths(stored, eighths);
    rgba.Fit(PackedSize(size, PixelLayout::kRgba));
    r = reader.Start(PixelLayout::kRgba, eighths);
    if (Succeeded(r)) r = reader.ReadRows(rgba.data(), size.height);
    if (Failed(r)) return r;
    Scale(rgba, size, wanted);
    TurnUpright(rgba, size, orientation);
    return result::kSuccess;
}

}  // namespace

Dimension SizeWithin(const Dimension& size, const Dimension& most) {
    assert(size.width > 0 && size.height > 0 && most.width > 0 && most.height > 0);
    if (size.width <= most.width && size.height <= most.height) return size;
    const auto scaled = [](long long side, long long numerator, long long denominator) {
        return static_cast<int>(std::max(1LL, (side * numerator + denominator / 2) / denominator));
    };
    const bool isWide = static_cast<long long>(size.width) * most.height >=
                        static_cast<long long>(most.width) * size.height;
    return isWide ? Dimension{most.width, scaled(size.height, most.width, size.width)}
                  : Dimension{scaled(size.width, most.height, size.height), most.height};
}

std::optional<Dimension> ReadUprightSize(const std::string& path) {
    FileKind kind{};
    Dimension size;
    if (Failed(ReadFileKind(path, kind))) return std::nullopt;
    if (kind == FileKind::kPng) {
        return Succeeded(ReadPngSize(path, size)) ? std::optional(size) : std::nullopt;
    }
    const Base::Owner<std::FILE, std::fclose> file(std::fopen(path.c_str(), "rbe"));
    if (!file || Failed(JpegReader(file.get()).ReadHeader(size))) return std::nullopt;
    const auto exif = ReadExif(path);
    return exif && IsTransposed(exif->orientation) ? Transposed(size) : size;
}

result DecodeWithin(const std::string& path, const Dimension& most, Block& rgba, Dimension& size) {
    assert(most.width > 0 && most.height > 0);
    FileKind kind{};
    result r = ReadFileKind(path, kind);
    if (Failed(r)) return r;
    if (kind == FileKind::kJpeg) return DecodeJpegWithin(path, most, rgba, size);
    r = DecodePicture(path, PixelLayout::kRgba, rgba, size);
    if (Succeeded(r)) Scale(rgba, size, SizeWithin(size, most));
    return r;
}

}  // namespace Osp::Media
