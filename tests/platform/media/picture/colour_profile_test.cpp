// The profile that tells what a picture's numbers mean, in both formats.
#include "tests/support/colour_profile.h"

#include <gtest/gtest.h>

#include "osp/media/picture/jpeg_codec.h"
#include "osp/media/picture/png_codec.h"
#include "tests/platform/media/picture/picture_bytes.h"

namespace Osp::Media {
namespace {

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

}  // namespace
}  // namespace Osp::Media
