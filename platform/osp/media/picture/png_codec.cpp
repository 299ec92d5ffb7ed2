#include "osp/media/picture/png_codec.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <png.h>

#include "osp/base/owner.h"

namespace Osp::Media {

namespace {

constexpr png_uint_32 kNoLimit = 0x7FFFFFFF;  // ours is told from damage

/// The library reports failure by a call that must not return.
struct ErrorManager {
    std::jmp_buf jump;
    bool isOutOfMemory = false;

    static void Fail(png_structp png, png_const_charp) {
        std::longjmp(static_cast<ErrorManager*>(png_get_error_ptr(png))->jump, 1);
    }
    static void Ignore(png_structp, png_const_charp) {}
    static void* Allocate(png_structp png, png_alloc_size_t size) {
        void* const memory = std::malloc(size);
        if (memory == nullptr) {
            static_cast<ErrorManager*>(png_get_mem_ptr(png))->isOutOfMemory = true;
        }
        return memory;
    }
    static void Free(png_structp, void* memory) { std::free(memory); }
};

/// Runs `step`, which owns nothing, and returns what became of it.
template <class Step>
result Try(ErrorManager& errors, const Step& step) {
    if (setjmp(errors.jump) != 0) {
        return errors.isOutOfMemory ? result::kOutOfMemory : result::kInvalidFormat;
    }
    step();
    return result::kSuccess;
}

/// Inside Try. `png` is null where there was no memory for it.
png_infop MakeInfo(ErrorManager& errors, png_structp png) {
    const png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
    if (info == nullptr) {
        errors.isOutOfMemory = true;
        std::longjmp(errors.jump, 1);
    }
    png_set_benign_errors(png, 1);
    return info;
}

/// Viewers blend the values as they are stored, without regard to how light they mean.
void BlendOnBlack(png_structp, png_row_infop row, png_bytep pixels) {
    const png_byte* in = pixels;
    for (png_uint_32 x = 0; x < row->width; ++x, in += 4) {
        for (int i = 0; i < 3; ++i) {
            *pixels++ = static_cast<png_byte>((in[i] * in[3] + 127) / 255);
        }
    }
}

class Reader {
  public:
    explicit Reader(std::span<const std::uint8_t> data) : data_(data) {}
    explicit Reader(const std::string& path) : file_(std::fopen(path.c_str(), "rbe")) {}
    ~Reader() { png_destroy_read_struct(&png_, &info_, nullptr); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// First. Everything before the pixels.
    result ReadHeader() {
        const result r = Try(errors_, [this] { SetUp(); });
        if (Failed(r)) return r;
        const bool isAcceptable =
            IsAcceptableSize(png_get_image_width(png_, info_), png_get_image_height(png_, info_));
        return isAcceptable ? result::kSuccess : result::kOutOfRange;
    }
    Graphics::Dimension Size() const {
        return {static_cast<int>(png_get_image_width(png_, info_)),
                static_cast<int>(png_get_image_height(png_, info_))};
    }
    result ReadPixels(PixelLayout layout, std::uint8_t* pixels) {
        return Try(errors_, [&] {
            Transform(layout);
            const int passes = png_set_interlace_handling(png_);
            png_read_update_info(png_, info_);
            const std::size_t rowBytes = png_get_rowbytes(png_, info_);
            for (int pass = 0; pass < passes; ++pass) {
                for (png_uint_32 y = 0; y < png_get_image_height(png_, info_); ++y) {
                    png_read_row(png_, pixels + rowBytes * y, nullptr);
                }
            }
        });
    }
    std::vector<std::uint8_t> Profile() {
        char* name = nullptr;
        int compression = 0;
        png_bytep profile = nullptr;
        png_uint_32 size = 0;
        png_get_iCCP(png_, info_, &name, &compression, &profile, &size);
        return {profile, profile + size};
    }

  private:
    void SetUp() {
        png_ = png_create_read_struct_2(PNG_LIBPNG_VER_STRING, &errors_, ErrorManager::Fail,
                                        ErrorManager::Ignore, &errors_, ErrorManager::Allocate,
                                        ErrorManager::Free);
        info_ = MakeInfo(errors_, png_);
        png_set_user_limits(png_, kNoLimit, kNoLimit);
        png_set_read_fn(png_, this, [](png_structp png, png_bytep bytes, std::size_t count) {
            if (!static_cast<Reader*>(png_get_io_ptr(png))->Read(bytes, count)) {
                png_error(png, "cut off");
            }
        });
        png_read_info(png_, info_);
    }

    bool Read(png_bytep bytes, std::size_t count) {
        if (file_) return std::fread(bytes, 1, count, file_.get()) == count;
        if (data_.size() < count) return false;
        std::memcpy(bytes, data_.data(), count);
        data_ = data_.subspan(count);
        return true;
    }

    void Transform(PixelLayout layout) {
        const bool hasAlpha = (png_get_color_type(png_, info_) & PNG_COLOR_MASK_ALPHA) != 0 ||
                              png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
        png_set_expand(png_);
        png_set_scale_16(png_);
        png_set_gray_to_rgb(png_);
        double gamma = 0;
        // What says more than a gamma does comes before it, and a profile stays with the values.
        if (png_get_valid(png_, info_, PNG_INFO_iCCP | PNG_INFO_sRGB) == 0 &&
            png_get_gAMA(png_, info_, &gamma) != 0) {
            png_set_gamma(png_, PNG_DEFAULT_sRGB, gamma);
        }
        if (layout == PixelLayout::kBgrx) png_set_bgr(png_);
        if (layout != PixelLayout::kRgb) {
            png_set_add_alpha(png_, 0xFF, PNG_FILLER_AFTER);
        } else if (hasAlpha) {
            png_set_read_user_transform_fn(png_, BlendOnBlack);
            png_set_user_transform_info(png_, nullptr, 8, 3);
        }
    }

    std::span<const std::uint8_t> data_;  // what has not been read yet
    Base::Owner<std::FILE, std::fclose> file_;
    ErrorManager errors_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
};

template <class Source>
result ReadSize(const Source& source, Graphics::Dimension& size) {
    Reader reader(source);
    const result r = reader.ReadHeader();
    if (Succeeded(r)) size = reader.Size();
    return r;
}

template <class Source>
result Decode(const Source& source, const Graphics::Dimension& size, PixelLayout layout,
              std::uint8_t* pixels) {
    Reader reader(source);
    const result r = reader.ReadHeader();
    if (Failed(r)) return r;
    // A file may have changed since its size was asked for.
    return reader.Size() == size ? reader.ReadPixels(layout, pixels) : result::kInvalidFormat;
}

class Writer {
  public:
    explicit Writer(EncodedPicture& encoded) : encoded_(encoded) {}
    ~Writer() { png_destroy_write_struct(&png_, &info_); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    result Write(const PixelView& picture, std::span<const std::uint8_t> profile) {
        png_image largest{};
        largest.width = static_cast<png_uint_32>(picture.size.width);
        largest.height = static_cast<png_uint_32>(picture.size.height);
        largest.format = PNG_FORMAT_RGB;
        encoded_.Reserve(PNG_IMAGE_PNG_SIZE_MAX(largest) + PNG_ZLIB_MAX_SIZE(profile.size()));
        encoded_.sizeBytes = 0;
        const result r = Try(errors_, [&] {
            WriteHeader(largest, profile);
            for (int y = 0; y < picture.size.height; ++y) {
                png_write_row(png_, picture.pixels + std::ptrdiff_t{picture.strideBytes} * y);
            }
            png_write_end(png_, nullptr);
        });
        return r == result::kInvalidFormat ? result::kFailure : r;
    }

  private:
    void WriteHeader(const png_image& image, std::span<const std::uint8_t> profile) {
        png_ = png_create_write_struct_2(PNG_LIBPNG_VER_STRING, &errors_, ErrorManager::Fail,
                                         ErrorManager::Ignore, &errors_, ErrorManager::Allocate,
                                         ErrorManager::Free);
        info_ = MakeInfo(errors_, png_);
        png_set_write_fn(
            png_, this,
            [](png_structp png, png_bytep bytes, std::size_t count) {
                if (!static_cast<Writer*>(png_get_io_ptr(png))->Append({bytes, count})) {
                    png_error(png, "no room");
                }
            },
            nullptr);
        png_set_IHDR(png_, info_, image.width, image.height, 8, PNG_COLOR_TYPE_RGB,
                     PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
        if (profile.empty()) {
            png_set_sRGB(png_, info_, PNG_sRGB_INTENT_PERCEPTUAL);
        } else {
            png_set_iCCP(png_, info_, "icc", PNG_COMPRESSION_TYPE_BASE, profile.data(),
                         static_cast<png_uint_32>(profile.size()));
        }
        png_write_info(png_, info_);
    }

    bool Append(std::span<const std::uint8_t> bytes) {
        if (encoded_.block.size() - encoded_.sizeBytes < bytes.size()) return false;
        std::ranges::copy(bytes, encoded_.block.data() + encoded_.sizeBytes);
        encoded_.sizeBytes += bytes.size();
        return true;
    }

    EncodedPicture& encoded_;
    ErrorManager errors_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
};

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

std::vector<std::uint8_t> ReadPngProfile(std::span<const std::uint8_t> data) {
    Reader reader(data);
    return Failed(reader.ReadHeader()) ? std::vector<std::uint8_t>() : reader.Profile();
}

result EncodePng(const PixelView& picture, std::span<const std::uint8_t> profile,
                 EncodedPicture& encoded) {
    if (picture.layout != PixelLayout::kRgb ||
        !IsAcceptableSize(picture.size.width, picture.size.height)) {
        return result::kInvalidArgument;
    }
    return Writer(encoded).Write(picture, profile);
}

}  // namespace Osp::Media
