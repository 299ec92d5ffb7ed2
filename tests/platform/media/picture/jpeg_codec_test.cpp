#include "osp/media/picture/jpeg_codec.h"

#include <gtest/gtest.h>
#include <random>

#include "osp/media/picture/jpeg_rows.h"
#include "tests/platform/media/picture/picture_bytes.h"
#include "tests/support/pictures/jpeg.h"

namespace Osp::Media {
namespace {

using Graphics::Dimension;
using Kivo::Testing::EncodeJpeg;
using Kivo::Testing::JpegClaiming;

constexpr Size kSizes[] = {{1, 1}, {7, 5}, {16, 16}, {33, 77}, {515, 38}, {640, 480}};

result Decode(std::span<const std::uint8_t> jpeg, Base::Block& pixels) {
    Dimension size;
    return DecodeJpeg(jpeg, PixelLayout::kRgb, pixels, size);
}

TEST(JpegCodec, EncodesByteForByteAsTheLibraryDoes) {
    const std::string segment("\xFF\xE1\0\6KIVO", 8);
    EncodedPicture encoded;  // reused, as a camera does
    for (const Look look : kLooks) {
        for (const Size& size : kSizes) {
            const Picture picture = RandomPicture(size.width, size.height, look, 1);
            const std::string expected = EncodeJpeg(picture);
            for (const PixelLayout layout : kLayouts) {
                const Bytes pixels = InLayout(picture, layout, 12);
                const PixelView view = PackedView(pixels.data(), SizeOf(picture), layout);
                for (const std::string& metadata : {std::string(), segment}) {
                    ASSERT_EQ(EncodeJpeg(view, AsBytes(metadata), encoded), result::kSuccess);
                    EXPECT_TRUE(std::ranges::equal(
                        encoded.Bytes(), AsBytes(std::string(expected).insert(2, metadata))))
                        << size.width << " x " << size.height;
                }
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
                    EXPECT_TRUE(std::ranges::equal(std::span(pixels.data(), pixels.size()),
                                                   InLayout(expected, layout, 255)))
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
        // Without its last scans a picture decodes without a word, but coarse or grey.
        for (std::size_t at = jpeg.find("\xFF\xDA"); at != std::string::npos;
             at = jpeg.find("\xFF\xDA", at + 1)) {
            EXPECT_EQ(Decode(AsBytes(jpeg).first(at), pixels), result::kInvalidFormat) << at;
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

}  // namespace
}  // namespace Osp::Media
