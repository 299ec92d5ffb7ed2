#include "osp/media/picture/png_codec.h"

#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

#include "osp/media/picture/jpeg_codec.h"
#include "tests/platform/media/picture/picture_bytes.h"
#include "tests/support/pictures/colour_profile.h"
#include "tests/support/pictures/png.h"

namespace Osp::Media {
namespace {

using Graphics::Dimension;
using Kivo::Testing::EncodePng;

Bytes Decoded(const std::string& png, const Dimension& size, PixelLayout layout) {
    Bytes pixels(PackedSize(size, layout));
    EXPECT_EQ(DecodePng(AsBytes(png), size, layout, pixels.data()), result::kSuccess);
    return pixels;
}

TEST(PngCodec, DecodesEveryLayoutWithItsAlpha) {
    const Picture picture = RandomPicture(37, 23, Look::kNoise, 6);
    Bytes rgba = InLayout(picture, PixelLayout::kRgba, 0);
    for (std::size_t i = 3; i < rgba.size(); i += 4) rgba[i] = static_cast<std::uint8_t>(i * 7);
    const std::string png = EncodePng(rgba, 37, 23, PNG_FORMAT_RGBA);
    Dimension size;
    ASSERT_EQ(ReadPngSize(AsBytes(png), size), result::kSuccess);
    EXPECT_EQ(size, (Dimension{37, 23}));
    EXPECT_TRUE(Decoded(png, size, PixelLayout::kRgba) == rgba);
    Bytes pixels = Decoded(png, size, PixelLayout::kBgrx);
    for (std::size_t i = 0; i < rgba.size(); i += 4) {
        const std::array expected = {rgba[i + 2], rgba[i + 1], rgba[i], rgba[i + 3]};
        ASSERT_TRUE(std::equal(expected.begin(), expected.end(), &pixels[i])) << i;
    }
    pixels = Decoded(png, size, PixelLayout::kRgb);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const int alpha = rgba[i / 3 * 4 + 3];
        ASSERT_EQ(pixels[i], std::lround(picture.bytes[i] * alpha / 255.0)) << "on black";
    }

    const std::string opaque = EncodePng(picture.bytes, 37, 23, PNG_FORMAT_RGB);
    EXPECT_TRUE(Decoded(opaque, size, PixelLayout::kRgba) ==
                InLayout(picture, PixelLayout::kRgba, 255));
    const std::string grey = EncodePng(Bytes(37 * 23, 99), 37, 23, PNG_FORMAT_GRAY);
    EXPECT_TRUE(Decoded(grey, size, PixelLayout::kRgb) == Bytes(3 * 37 * 23, 99));
    EXPECT_EQ(DecodePng(AsBytes(grey), {23, 37}, PixelLayout::kRgb, pixels.data()),
              result::kInvalidFormat)
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

TEST(PngCodec, TakesEveryKindOfTransparencyAsViewersDo) {
    const auto decoded = [](const OneRow& what) {
        return Decoded(Png(what), {what.width, 1}, PixelLayout::kRgb);
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

TEST(PngCodec, MindsAGammaUnlessThereIsAProfile) {
    const auto decoded = [](void (*prepare)(png_structp, png_infop)) {
        const OneRow row{1, 8, PNG_COLOR_TYPE_RGB, {64, 64, 64}, prepare};
        return Decoded(Png(row), {1, 1}, PixelLayout::kRgb)[0];
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

TEST(PngCodec, RefusesWhatIsDamaged) {
    const Picture picture = RandomPicture(37, 23, Look::kNoise, 6);
    const std::string png = EncodePng(picture.bytes, 37, 23, PNG_FORMAT_RGB);
    Dimension size{37, 23};
    const auto decode = [&](const std::string& file) {
        Bytes pixels(picture.bytes.size());
        return DecodePng(AsBytes(file), size, PixelLayout::kRgb, pixels.data());
    };
    for (std::size_t length = 0; length + 12 < png.size(); length += 5) {
        EXPECT_EQ(decode(png.substr(0, length)), result::kInvalidFormat) << length;
    }
    std::string damaged = png;
    damaged[png.size() / 2] ^= 1;
    EXPECT_EQ(decode(damaged), result::kInvalidFormat);
    for (const char* path : {"/missing", "/"}) {
        EXPECT_EQ(ReadPngSize(path, size), result::kInvalidFormat) << path;
    }
}

TEST(ColourProfile, GoesThroughSegmentsOfAJpegAndAChunkOfAPng) {
    const Picture picture = RandomPicture(33, 20, Look::kGradient, 9);
    const PixelView view = PackedView(picture.bytes.data(), {33, 20}, PixelLayout::kRgb);
    for (const std::size_t length : {0UL, 200UL, 65519UL, 65520UL, 140'000UL}) {
        const Bytes profile = Kivo::Testing::MakeProfile("RGB ", length);
        EncodedPicture encoded;
        Bytes segments;
        AppendColourProfile(profile, segments);
        ASSERT_EQ(EncodeJpeg(view, segments, encoded), result::kSuccess);
        EXPECT_TRUE(ReadJpegProfile(encoded.Bytes()) == profile) << length;
        ASSERT_EQ(EncodePng(view, profile, encoded), result::kSuccess);
        EXPECT_TRUE(ReadPngProfile(encoded.Bytes()) == profile) << length;
        const std::string png(encoded.Bytes().begin(), encoded.Bytes().end());
        EXPECT_TRUE(Decoded(png, {33, 20}, PixelLayout::kRgb) == picture.bytes);
    }
}

}  // namespace
}  // namespace Osp::Media
