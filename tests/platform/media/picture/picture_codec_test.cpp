#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <random>

#include "osp/media/picture/bmp_codec.h"
#include "osp/media/picture/jpeg_codec.h"
#include "osp/media/picture/jpeg_rows.h"
#include "osp/media/picture/picture_file.h"
#include "osp/media/picture/png_codec.h"
#include "tests/support/colour_profile.h"
#include "tests/support/jpeg.h"
#include "tests/support/pictures.h"
#include "tests/support/png.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Media {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Graphics::Dimension;
using Kivo::Testing::EncodeJpeg;
using Kivo::Testing::EncodePng;
using Kivo::Testing::JpegClaiming;
using Kivo::Testing::PngClaiming;
using Testing::TemporaryFolder;
using Testing::WriteText;

constexpr Size kSizes[] = {{1, 1}, {7, 5}, {16, 16}, {33, 77}, {515, 38}, {640, 480}};
constexpr PixelLayout kLayouts[] = {PixelLayout::kRgb, PixelLayout::kRgba, PixelLayout::kBgrx};

/// The picture's pixels in another layout; the fourth byte is `fourth`.
Bytes InLayout(const Picture& picture, PixelLayout layout, std::uint8_t fourth) {
    if (layout == PixelLayout::kRgb) return picture.bytes;
    Bytes bytes;
    for (std::size_t i = 0; i < picture.bytes.size(); i += 3) {
        const std::uint8_t* const p = &picture.bytes[i];
        const bool isRgba = layout == PixelLayout::kRgba;
        bytes.insert(bytes.end(), {p[isRgba ? 0 : 2], p[1], p[isRgba ? 2 : 0], fourth});
    }
    return bytes;
}

Dimension SizeOf(const Picture& picture) {
    return {picture.width, picture.height};
}

std::span<const std::uint8_t> AsBytes(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

Bytes Copy(const Base::Block& block, std::size_t size) {
    return {block.data(), block.data() + size};
}

result Decode(std::span<const std::uint8_t> jpeg, Base::Block& pixels) {
    Dimension size;
    return DecodeJpeg(jpeg, PixelLayout::kRgb, pixels, size);
}

TEST(JpegCodec, EncodesByteForByteAsTheLibraryDoes) {
    const Bytes metadata = {0xFF, 0xE1, 0, 6, 'K', 'I', 'V', 'O'};
    EncodedPicture encoded;  // reused, as a camera does
    for (const Look look : kLooks) {
        for (const Size& size : kSizes) {
            const Picture picture = RandomPicture(size.width, size.height, look, 1);
            std::string expected = EncodeJpeg(picture);
            for (const PixelLayout layout : kLayouts) {
                const Bytes pixels = InLayout(picture, layout, 12);
                const PixelView view = PackedView(pixels.data(), SizeOf(picture), layout);
                ASSERT_EQ(EncodeJpeg(view, {}, encoded), result::kSuccess);
                EXPECT_TRUE(std::ranges::equal(encoded.Bytes(), AsBytes(expected)))
                    << size.width << " x " << size.height;
                std::string described = expected;
                described.insert(2, reinterpret_cast<const char*>(metadata.data()),
                                 metadata.size());
                ASSERT_EQ(EncodeJpeg(view, metadata, encoded), result::kSuccess);
                EXPECT_TRUE(std::ranges::equal(encoded.Bytes(), AsBytes(described)));
            }
        }
    }
    for (const Dimension& size : {Dimension{0, 4}, {4, 0}, {-1, 4}, {40000, 1}, {9000, 9000}}) {
        EXPECT_EQ(EncodeJpeg({encoded.block.data(), size, 4, PixelLayout::kRgb}, {}, encoded),
                  result::kInvalidArgument);
    }
}

TEST(JpegCodec, DecodesPixelForPixelAsTheLibraryDoes) {
    Base::Block pixels;
    for (const TJSAMP subsampling : {TJSAMP_420, TJSAMP_422, TJSAMP_444, TJSAMP_GRAY}) {
        for (const int flags : {0, TJFLAG_PROGRESSIVE}) {
            for (const Size& size : kSizes) {
                const std::string jpeg = EncodeJpeg(
                    RandomPicture(size.width, size.height, Look::kGradient, 3), subsampling, flags);
                const Picture expected = Kivo::Testing::DecodeJpeg(jpeg);
                for (const PixelLayout layout : kLayouts) {
                    Dimension decodedSize;
                    ASSERT_EQ(DecodeJpeg(AsBytes(jpeg), layout, pixels, decodedSize),
                              result::kSuccess);
                    EXPECT_EQ(decodedSize, SizeOf(expected));
                    EXPECT_TRUE(Copy(pixels, pixels.size()) == InLayout(expected, layout, 255))
                        << size.width << " x " << size.height << ", subsampling " << subsampling;
                }
            }
        }
    }
}

TEST(JpegCodec, RefusesEveryBeginningOfAPicture) {
    for (const int flags : {0, TJFLAG_PROGRESSIVE}) {
        const std::string jpeg =
            EncodeJpeg(RandomPicture(160, 120, Look::kNoise, 4), TJSAMP_420, flags);
        Base::Block pixels;
        ASSERT_EQ(Decode(AsBytes(jpeg), pixels), result::kSuccess);
        for (std::size_t length = 0; length + 20 < jpeg.size(); length += length < 700 ? 1 : 61) {
            EXPECT_EQ(Decode(AsBytes(jpeg).first(length), pixels), result::kInvalidFormat)
                << length;
        }
        EXPECT_EQ(Decode(AsBytes(jpeg + "rubbish behind it"), pixels), result::kSuccess);
    }
}

TEST(JpegCodec, SurvivesDamageAnywhere) {
    std::minstd_rand random(7);
    const std::string jpeg = EncodeJpeg(RandomPicture(64, 48, Look::kGradient, 5));
    Base::Block pixels;
    int refused = 0;
    for (int i = 0; i < 3000; ++i) {
        std::string damaged = jpeg;
        for (unsigned flips = 1 + random() % 4; flips > 0; --flips) {
            damaged[random() % damaged.size()] = static_cast<char>(random());
        }
        const result r = Decode(AsBytes(damaged), pixels);
        EXPECT_TRUE(r == result::kSuccess || r == result::kInvalidFormat ||
                    r == result::kUnsupported || r == result::kOutOfRange);
        refused += Failed(r);
    }
    EXPECT_GT(refused, 300);
}

TEST(JpegCodec, BelievesNoHeaderThatClaimsTooMuch) {
    const std::string jpeg = EncodeJpeg(RandomPicture(64, 48, Look::kGradient, 5));
    Base::Block pixels;
    Dimension size;
    EXPECT_EQ(ReadJpegSize(AsBytes(jpeg), size), result::kSuccess);
    EXPECT_EQ(size, (Dimension{64, 48}));
    for (const Dimension& claim :
         {Dimension{65500, 1}, {1, 65500}, {32767, 32767}, {8001, 8000}, {0, 48}, {64, 0}}) {
        const std::string lie = JpegClaiming(jpeg, claim.width, claim.height);
        const bool isEmpty = claim.width == 0 || claim.height == 0;
        const result expected = isEmpty ? result::kInvalidFormat : result::kOutOfRange;
        EXPECT_EQ(ReadJpegSize(AsBytes(lie), size), expected) << claim.width;
        EXPECT_EQ(Decode(AsBytes(lie), pixels), expected) << claim.width;
    }
    EXPECT_EQ(pixels.size(), 0u) << "memory for a lie";
    for (const Dimension& claim : {Dimension{65, 49}, {64, 4800}, {8000, 8000}}) {
        EXPECT_EQ(Decode(AsBytes(JpegClaiming(jpeg, claim.width, claim.height)), pixels),
                  result::kInvalidFormat)
            << claim.width;
    }
}

/// Decodes with the rows of another file as they should be, and returns what was odd.
std::string OddityOf(const std::string& jpeg, const Picture& expected) {
    JpegReader reader(AsBytes(jpeg));
    Dimension size;
    Bytes pixels(expected.bytes.size());
    EXPECT_EQ(reader.ReadHeader(size), result::kSuccess);
    EXPECT_EQ(size, SizeOf(expected));
    EXPECT_EQ(reader.Start(PixelLayout::kRgb), result::kSuccess);
    EXPECT_EQ(reader.ReadRows(pixels.data(), size.height), result::kSuccess);
    EXPECT_TRUE(pixels == expected.bytes);
    return std::string(reader.Oddity());
}

TEST(JpegCodec, TakesOddFilesThatHoldEveryRow) {
    for (const int flags : {0, TJFLAG_PROGRESSIVE}) {
        const std::string jpeg =
            EncodeJpeg(RandomPicture(160, 120, Look::kGradient, 4), TJSAMP_444, flags);
        const Picture expected = Kivo::Testing::DecodeJpeg(jpeg);
        EXPECT_EQ(OddityOf(jpeg, expected), "");
        EXPECT_EQ(OddityOf(jpeg.substr(0, jpeg.size() - 2), expected), "the end marker is missing");
        for (const std::size_t at :
             {std::size_t{2}, jpeg.find("\xFF\xDB"), jpeg.find("\xFF\xDA")}) {
            EXPECT_EQ(OddityOf(std::string(jpeg).insert(at, "abc"), expected),
                      "there are stray bytes before a marker")
                << at;
        }
    }
    std::string odd = EncodeJpeg(RandomPicture(160, 120, Look::kGradient, 4));
    const Picture expected = Kivo::Testing::DecodeJpeg(odd);
    const std::size_t scan = odd.find("\xFF\xDA");
    odd[scan + 6 + 2 * static_cast<std::size_t>(odd[scan + 4])] = 5;  // the last coefficient
    EXPECT_EQ(OddityOf(odd, expected), "the parameters of a scan are odd");
}

// Without its last scans a picture decodes without a word, but coarse or grey.
TEST(JpegCodec, RefusesPicturesWithoutTheirLastScans) {
    const std::string jpeg =
        EncodeJpeg(RandomPicture(160, 120, Look::kGradient, 4), TJSAMP_420, TJFLAG_PROGRESSIVE);
    Base::Block pixels;
    int scans = 0;
    for (std::size_t at = jpeg.find("\xFF\xDA"); at != std::string::npos;
         at = jpeg.find("\xFF\xDA", at + 1)) {
        EXPECT_EQ(Decode(AsBytes(jpeg).first(at), pixels), result::kInvalidFormat) << at;
        ++scans;
    }
    EXPECT_GT(scans, 3);
}

TEST(JpegCodec, TellsKindsThatItDoesNotTake) {
    std::string deep = EncodeJpeg(RandomPicture(64, 48, Look::kGradient, 5));
    deep[deep.find("\xFF\xC0") + 4] = 12;  // bits a channel
    Dimension size;
    EXPECT_EQ(ReadJpegSize(AsBytes(deep), size), result::kUnsupported);
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
        Bytes pixels(picture.bytes.size());
        ASSERT_EQ(DecodePng(encoded.Bytes(), {33, 20}, PixelLayout::kRgb, pixels.data()),
                  result::kSuccess);
        EXPECT_TRUE(pixels == picture.bytes);
    }
}

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

TEST(PictureFile, TellsKindAndSizeByTheContent) {
    const TemporaryFolder folder;
    const Picture picture = RandomPicture(64, 48, Look::kGradient, 8);
    WriteText(folder / "a.png", EncodeJpeg(picture));
    WriteText(folder / "b.jpg", EncodePng(picture.bytes, 64, 48, PNG_FORMAT_RGB));
    WriteText(folder / "c.jpg", "BM, but not for us");
    WriteText(folder / "d.jpg", "");
    const std::pair<const char*, FileKind> kinds[] = {{"a.png", FileKind::kJpeg},
                                                      {"b.jpg", FileKind::kPng}};
    Base::Block pixels;
    for (const auto& [name, expected] : kinds) {
        FileKind kind{};
        Dimension size;
        EXPECT_EQ(ReadFileKind(folder / name, kind), result::kSuccess);
        EXPECT_EQ(kind, expected);
        EXPECT_EQ(ReadPictureSize(folder / name, size), result::kSuccess);
        EXPECT_EQ(size, (Dimension{64, 48}));
        size = {};
        EXPECT_EQ(DecodePicture(folder / name, PixelLayout::kRgb, pixels, size), result::kSuccess);
        EXPECT_EQ(size, (Dimension{64, 48}));
    }
    EXPECT_TRUE(Copy(pixels, pixels.size()) == picture.bytes) << "PNG loses nothing";
    const std::pair<const char*, result> failures[] = {{"c.jpg", result::kInvalidFormat},
                                                       {"d.jpg", result::kInvalidFormat},
                                                       {"missing", result::kFileNotFound}};
    for (const auto& [name, expected] : failures) {
        FileKind kind{};
        Dimension size;
        EXPECT_EQ(ReadFileKind(folder / name, kind), expected);
        EXPECT_EQ(ReadPictureSize(folder / name, size), expected);
        EXPECT_EQ(DecodePicture(folder / name, PixelLayout::kRgb, pixels, size), expected);
    }
}

TEST(BmpCodec, WritesRowsBottomToTopBlueFirst) {
    for (const Size& size : {Size{1, 1}, {5, 3}, {4, 7}, {64, 48}}) {
        const Picture picture = RandomPicture(size.width, size.height, Look::kNoise, 2);
        const int rowBytes = (3 * size.width + 3) / 4 * 4;
        ASSERT_EQ(BmpFileBytes(SizeOf(picture)), 54 + rowBytes * size.height);
        Bytes expected = {'B', 'M'};
        const auto put = [&expected](std::uint32_t value, int bytes) {
            for (; bytes > 0; --bytes, value >>= 8)
                expected.push_back(static_cast<std::uint8_t>(value));
        };
        const auto imageBytes = static_cast<std::uint32_t>(rowBytes * size.height);
        for (const std::uint32_t value :
             {54 + imageBytes, 0U, 54U, 40U, static_cast<std::uint32_t>(size.width),
              static_cast<std::uint32_t>(size.height), 1U | 24U << 16, 0U, imageBytes, 2835U, 2835U,
              0U, 0U}) {
            put(value, 4);
        }
        for (int y = size.height - 1; y >= 0; --y) {
            for (int x = 0; x < size.width; ++x) {
                const std::uint8_t* const p = picture.View().Row(y) + 3 * x;
                expected.insert(expected.end(), {p[2], p[1], p[0]});
            }
            expected.resize((expected.size() - 54 + 3) / 4 * 4 + 54);
        }
        for (const PixelLayout layout : kLayouts) {
            const Bytes pixels = InLayout(picture, layout, 200);
            Bytes file(expected.size(), 0xCC);
            EncodeBmp(PackedView(pixels.data(), SizeOf(picture), layout), file.data());
            EXPECT_TRUE(file == expected) << size.width << " x " << size.height;
        }
    }
    EXPECT_EQ(BmpFileBytes({32767, 32767}), 0) << "does not fit";
}

}  // namespace
}  // namespace Osp::Media
