#include "osp/media/picture/png_codec.h"

#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

#include "tests/platform/media/picture/picture_bytes.h"
#include "tests/support/colour_profile.h"
#include "tests/support/png.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Media {
namespace {

using Graphics::Dimension;
using Kivo::Testing::EncodePng;
using Kivo::Testing::PngClaiming;
using Testing::TemporaryFolder;
using Testing::WriteText;

class PngCodecTest : public testing::Test {
  protected:
    std::string Put(const std::string& bytes) {
        WriteText(path_, bytes);
        return path_;
    }
    TemporaryFolder folder_;
    std::string path_ = folder_ / "picture.png";
};

TEST_F(PngCodecTest, DecodesEveryLayoutWithItsAlpha) {
    const Picture picture = RandomPicture(37, 23, Look::kNoise, 6);
    Bytes rgba = InLayout(picture, PixelLayout::kRgba, 0);
    for (std::size_t i = 3; i < rgba.size(); i += 4) rgba[i] = static_cast<std::uint8_t>(i * 7);
    const std::string path = Put(EncodePng(rgba, 37, 23, PNG_FORMAT_RGBA));
    Dimension size;
    ASSERT_EQ(ReadPngSize(path, size), result::kSuccess);
    EXPECT_EQ(size, (Dimension{37, 23}));
    Bytes pixels(rgba.size());
    ASSERT_EQ(DecodePng(path, size, PixelLayout::kRgba, pixels.data()), result::kSuccess);
    EXPECT_TRUE(pixels == rgba);
    ASSERT_EQ(DecodePng(path, size, PixelLayout::kBgrx, pixels.data()), result::kSuccess);
    for (std::size_t i = 0; i < rgba.size(); i += 4) {
        const std::array expected = {rgba[i + 2], rgba[i + 1], rgba[i], rgba[i + 3]};
        ASSERT_TRUE(std::equal(expected.begin(), expected.end(), &pixels[i])) << i;
    }
    pixels.resize(picture.bytes.size());
    ASSERT_EQ(DecodePng(path, size, PixelLayout::kRgb, pixels.data()), result::kSuccess);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const int alpha = rgba[i / 3 * 4 + 3];
        ASSERT_EQ(pixels[i], std::lround(picture.bytes[i] * alpha / 255.0)) << "on black";
    }

    Put(EncodePng(picture.bytes, 37, 23, PNG_FORMAT_RGB));
    pixels.resize(rgba.size());
    ASSERT_EQ(DecodePng(path, size, PixelLayout::kRgba, pixels.data()), result::kSuccess);
    EXPECT_TRUE(pixels == InLayout(picture, PixelLayout::kRgba, 255));
    const Bytes grey(37 * 23, 99);
    Put(EncodePng(grey, 37, 23, PNG_FORMAT_GRAY));
    ASSERT_EQ(DecodePng(path, size, PixelLayout::kRgba, pixels.data()), result::kSuccess);
    EXPECT_EQ(pixels[400], 99);
    EXPECT_EQ(DecodePng(path, {23, 37}, PixelLayout::kRgba, pixels.data()), result::kInvalidFormat)
        << "of another size than when it was asked";
}

/// A file of one row written by the library's full interface; `prepare` sets what is special.
struct OneRow {
    int width;
    int depth;
    int colourType;
    Bytes row;
    void (*prepare)(png_structp png, png_infop info) = [](png_structp, png_infop) {};
};

std::string Png(const OneRow& what) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    std::string file;
    const auto append = [](png_structp writer, png_bytep bytes, png_size_t count) {
        static_cast<std::string*>(png_get_io_ptr(writer))->append(bytes, bytes + count);
    };
    png_set_write_fn(png, &file, append, nullptr);
    png_set_IHDR(png, info, static_cast<png_uint_32>(what.width), 1, what.depth, what.colourType,
                 PNG_INTERLACE_NONE, 0, 0);
    what.prepare(png, info);
    png_write_info(png, info);
    png_write_row(png, what.row.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return file;
}

TEST_F(PngCodecTest, TakesEveryKindOfTransparencyAsViewersDo) {
    const auto decoded = [this](const OneRow& what) {
        Bytes pixels(static_cast<std::size_t>(3 * what.width));
        EXPECT_EQ(DecodePng(Put(Png(what)), {what.width, 1}, PixelLayout::kRgb, pixels.data()),
                  result::kSuccess);
        return pixels;
    };
    EXPECT_EQ(decoded({1, 16, PNG_COLOR_TYPE_RGB, {0x80, 0x80, 0x40, 0x40, 0xC0, 0xC0}}),
              (Bytes{0x80, 0x40, 0xC0}));
    EXPECT_EQ(decoded({2, 8, PNG_COLOR_TYPE_GRAY_ALPHA, {200, 128, 201, 0}}),
              (Bytes{100, 100, 100, 0, 0, 0}));
    EXPECT_EQ(decoded({1, 16, PNG_COLOR_TYPE_GRAY_ALPHA, {200, 200, 128, 128}}),
              (Bytes{100, 100, 100}));
    const auto keyed = [](png_structp png, png_infop info) {
        const png_color_16 key{0, 7, 8, 9, 3};
        png_set_tRNS(png, info, nullptr, 0, &key);
    };
    EXPECT_EQ(decoded({2, 8, PNG_COLOR_TYPE_RGB, {7, 8, 9, 7, 8, 10}, keyed}),
              (Bytes{0, 0, 0, 7, 8, 10}));
    EXPECT_EQ(decoded({4, 2, PNG_COLOR_TYPE_GRAY, {0b00011011}, keyed}),
              (Bytes{0, 0, 0, 85, 85, 85, 170, 170, 170, 0, 0, 0}));
    const auto palette = [](png_structp png, png_infop info) {
        const png_color colours[] = {{200, 100, 50}, {20, 40, 60}};
        const png_byte alphas[] = {64};
        png_set_PLTE(png, info, colours, 2);
        png_set_tRNS(png, info, alphas, 1, nullptr);
    };
    EXPECT_EQ(decoded({2, 1, PNG_COLOR_TYPE_PALETTE, {0b01000000}, palette}),
              (Bytes{50, 25, 13, 20, 40, 60}));
}

TEST_F(PngCodecTest, MindsAGammaUnlessThereIsAProfile) {
    const auto decoded = [this](void (*prepare)(png_structp, png_infop)) {
        Bytes pixels(3);
        const OneRow row{1, 8, PNG_COLOR_TYPE_RGB, {64, 64, 64}, prepare};
        EXPECT_EQ(DecodePng(Put(Png(row)), {1, 1}, PixelLayout::kRgb, pixels.data()),
                  result::kSuccess);
        return pixels[0];
    };
    EXPECT_NEAR(decoded([](png_structp png, png_infop info) { png_set_gAMA(png, info, 1); }), 137,
                2);
    EXPECT_EQ(decoded([](png_structp png, png_infop info) {
                  const auto profile = Kivo::Testing::MakeProfile("RGB ", 200);
                  png_set_gAMA(png, info, 1);
                  png_set_iCCP(png, info, "icc", 0, profile.data(), 200);
              }),
              64);
}

TEST_F(PngCodecTest, RefusesWhatIsDamagedOrLies) {
    const Picture picture = RandomPicture(37, 23, Look::kNoise, 6);
    const std::string png = EncodePng(picture.bytes, 37, 23, PNG_FORMAT_RGB);
    Bytes pixels(picture.bytes.size());
    Dimension size{37, 23};
    for (std::size_t length = 0; length + 12 < png.size(); length += 5) {
        EXPECT_EQ(DecodePng(Put(png.substr(0, length)), size, PixelLayout::kRgb, pixels.data()),
                  result::kInvalidFormat)
            << length;
    }
    std::string damaged = png;
    damaged[png.size() / 2] ^= 1;
    EXPECT_EQ(DecodePng(Put(damaged), size, PixelLayout::kRgb, pixels.data()),
              result::kInvalidFormat);
    for (const Dimension& claim : {Dimension{40000, 1}, {1, 40000}, {30000, 30000}, {0, 23}}) {
        const std::string lie = PngClaiming(png, static_cast<std::uint32_t>(claim.width),
                                            static_cast<std::uint32_t>(claim.height));
        EXPECT_EQ(ReadPngSize(Put(lie), size),
                  claim.width == 0 ? result::kInvalidFormat : result::kOutOfRange)
            << claim.width;
    }
    EXPECT_EQ(ReadPngSize(folder_ / "missing", size), result::kInvalidFormat);
    EXPECT_EQ(ReadPngSize(folder_.Path(), size), result::kInvalidFormat);
}

}  // namespace
}  // namespace Osp::Media
