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

    /// Opens the file and reads its header.
    bool Begin(const std::string& path) {
        return png_image_begin_read_from_file(&image_, path.c_str()) != 0 &&
               IsAcceptableSize(image_.width, image_.height);
    }
    Graphics::Dimension Size() const {
        return {static_cast<int>(image_.width), static_cast<int>(image_.height)};
    }
    bool Finish(png_uint_32 format, std::uint8_t* pixels) {
        constexpr png_color kBlack{0, 0, 0};
        image_.format = format;
        return png_image_finish_read(&image_, &kBlack, pixels, 0, nullptr) != 0;
    }

  private:
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

}  // namespace

bool IsPng(std::span<const std::uint8_t> data) {
    constexpr std::uint8_t kStart[] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    return data.size() >= std::size(kStart) && std::equal(kStart, std::end(kStart), data.begin());
}

result ReadPngSize(const std::string& path, Graphics::Dimension& size) {
    Reader reader;
    if (!reader.Begin(path)) return result::kInvalidFormat;
    size = reader.Size();
    return result::kSuccess;
}

result DecodePng(const std::string& path, const Graphics::Dimension& size, PixelLayout layout,
                 std::uint8_t* pixels) {
    Reader reader;
    // The file may have changed since its size was asked for.
    if (!reader.Begin(path) || reader.Size() != size) return result::kInvalidFormat;
    return reader.Finish(PngFormat(layout), pixels) ? result::kSuccess : result::kInvalidFormat;
}

}  // namespace Osp::Media
