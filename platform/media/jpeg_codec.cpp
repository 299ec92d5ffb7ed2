#include "media/jpeg_codec.h"

#include <algorithm>
#include <memory>
#include <turbojpeg.h>

namespace Osp::Media {

namespace {

struct HandleDeleter {
    void operator()(void* handle) const { tjDestroy(handle); }
};
using Handle = std::unique_ptr<void, HandleDeleter>;

// Warnings are what a truncated file causes: without the flag it decodes to a half grey picture.
constexpr int kDecodeFlags = TJFLAG_ACCURATEDCT | TJFLAG_STOPONWARNING | TJFLAG_LIMITSCANS;
constexpr int kEncodeFlags = TJFLAG_ACCURATEDCT | TJFLAG_NOREALLOC;
constexpr std::size_t kStartMarkerBytes = 2;

constexpr int TurboFormat(PixelLayout layout) {
    switch (layout) {
        case PixelLayout::kRgb:
            return TJPF_RGB;
        case PixelLayout::kRgba:
            return TJPF_RGBA;
        case PixelLayout::kBgrx:
            return TJPF_BGRX;
    }
    return TJPF_RGB;
}

result ReadHeader(tjhandle handle, std::span<const std::uint8_t> data, Graphics::Dimension& size) {
    int subsampling = 0;
    int colorSpace = 0;
    if (tjDecompressHeader3(handle, data.data(), data.size(), &size.width, &size.height,
                            &subsampling, &colorSpace) != 0 ||
        !IsAcceptableSize(size.width, size.height)) {
        return result::kInvalidFormat;
    }
    return result::kSuccess;
}

}  // namespace

bool IsJpeg(std::span<const std::uint8_t> data) {
    constexpr std::uint8_t kStart[] = {0xFF, 0xD8, 0xFF};
    return data.size() >= std::size(kStart) && std::equal(kStart, std::end(kStart), data.begin());
}

result ReadJpegSize(std::span<const std::uint8_t> data, Graphics::Dimension& size) {
    const Handle handle(tjInitDecompress());
    return ReadHeader(handle.get(), data, size);
}

result DecodeJpeg(std::span<const std::uint8_t> data, PixelLayout layout, Base::Block& pixels,
                  Graphics::Dimension& size) {
    const Handle handle(tjInitDecompress());
    const result r = ReadHeader(handle.get(), data, size);
    if (Failed(r)) return r;
    const std::size_t needed = PackedSize(size, layout);
    if (pixels.size() != needed) {
        pixels = {};  // goes back before its successor is taken
        pixels = Base::Block(needed);
    }
    if (tjDecompress2(handle.get(), data.data(), data.size(), pixels.data(), size.width, 0,
                      size.height, TurboFormat(layout), kDecodeFlags) != 0) {
        return result::kInvalidFormat;
    }
    return result::kSuccess;
}

result EncodeJpeg(const PixelView& picture, std::span<const std::uint8_t> metadata,
                  EncodedPicture& encoded) {
    const auto [width, height] = picture.size;
    if (!IsAcceptableSize(width, height)) return result::kInvalidArgument;
    const unsigned long room = tjBufSize(width, height, TJSAMP_420);
    if (encoded.block.size() < room + metadata.size()) {
        encoded.block = {};
        encoded.block = Base::Block(room + metadata.size());
    }
    // The metadata lies between the start marker and the rest. So the picture is encoded that much
    // further back, and its start marker is overwritten by the end of the metadata.
    std::uint8_t* const start = encoded.block.data();
    std::uint8_t* target = start + metadata.size();
    unsigned long size = room;
    const Handle handle(tjInitCompress());
    if (tjCompress2(handle.get(), picture.pixels, width, picture.strideBytes, height,
                    TurboFormat(picture.layout), &target, &size, TJSAMP_420, kJpegQuality,
                    kEncodeFlags) != 0) {
        return result::kFailure;
    }
    std::copy_n(target, kStartMarkerBytes, start);
    std::ranges::copy(metadata, start + kStartMarkerBytes);
    encoded.sizeBytes = metadata.size() + size;
    return result::kSuccess;
}

}  // namespace Osp::Media
