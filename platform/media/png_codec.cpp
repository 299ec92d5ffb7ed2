#include "media/png_codec.h"

#include <algorithm>
#include <png.h>

namespace Osp::Media {

namespace {

class Reader {
  public:
    Reader() { image_.version = PNG_IMAGE_VERSION; }
    ~Reader() { png_image_free(&image_); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Reads the header of a file or of a file's bytes.
    bool Begin(const std::string& path) {
        return png_image_begin_read_from_file(&image_, path.c_str()) != 0 && HasAcceptableSize();
    }
    bool Begin(std::span<const std::uint8_t> data) {
        return png_image_begin_read_from_memory(&image_, data.data(), data.size()) != 0 &&
               HasAcceptableSize();
    }
    Graphics::Dimension Size() const {
        return {static_cast<int>(image_.width), static_cast<int>(image_.height)};
    }
    bool Finish(png_uint_32 format, std::uint8_t* pixels) {
        constexpr png_color kBlack{0, 0, 0};
        image_.format = format;
        image_.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;  // 16-bit samples without a note are no others
        return png_image_finish_read(&image_, &kBlack, pixels, 0, nullptr) != 0;
    }

  private:
    bool HasAcceptableSize() const { return IsAcceptableSize(image_.width, image_.height); }

    png_image image_{};
};

constexpr png_uint_32 PngFormat(PixelLayout layout) {
    switch (layout) {
        case PixelLayout::kRgb:
            return PNG_FORMAT_RGB;
        case PixelLayout::kRgba:
            return PNG_FORMAT_RGBA;
        case PixelLayout::kBgrx:
            return PNG_FORMAT_BGRA;
    }
    return PNG_FORMAT_RGB;
}

template <class Source>
result ReadSize(const Source& source, Graphics::Dimension& size) {
    Reader reader;
    if (!reader.Begin(source)) return result::kInvalidFormat;
    size = reader.Size();
    return result::kSuccess;
}

template <class Source>
result Decode(const Source& source, const Graphics::Dimension& size, PixelLayout layout,
              std::uint8_t* pixels) {
    Reader reader;
    // A file may have changed since its size was asked for.
    if (!reader.Begin(source) || reader.Size() != size) return result::kInvalidFormat;
    return reader.Finish(PngFormat(layout), pixels) ? result::kSuccess : result::kInvalidFormat;
}

}  // namespace

bool IsPng(std::span<const std::uint8_t> data) {
    constexpr std::uint8_t kStart[] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    return data.size() >= std::size(kStart) && std::equal(kStart, std::end(kStart), data.begin());
}

result ReadPngSize(const std::string& path, Graphics::Dimension& size) {
    return ReadSize(path, size);
}

result ReadPngSize(std::span<const std::uint8_t> data, Graphics::Dimension& size) {
    return ReadSize(data, size);
}

result DecodePng(const std::string& path, const Graphics::Dimension& size, PixelLayout layout,
                 std::uint8_t* pixels) {
    return Decode(path, size, layout, pixels);
}

result DecodePng(std::span<const std::uint8_t> data, const Graphics::Dimension& size,
                 PixelLayout layout, std::uint8_t* pixels) {
    return Decode(data, size, layout, pixels);
}

result EncodePng(const PixelView& picture, EncodedPicture& encoded) {
    const auto [width, height] = picture.size;
    if (picture.layout != PixelLayout::kRgb || !IsAcceptableSize(width, height)) {
        return result::kInvalidArgument;
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    encoded.Reserve(size);
    if (png_image_write_to_memory(&image, encoded.block.data(), &size, 0, picture.pixels,
                                  picture.strideBytes, nullptr) == 0) {
        return result::kFailure;
    }
    encoded.sizeBytes = size;
    return result::kSuccess;
}

}  // namespace Osp::Media
