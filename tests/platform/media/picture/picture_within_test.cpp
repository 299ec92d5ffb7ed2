// Pictures decoded for a place that is smaller than they are.
#include "osp/media/picture/picture_within.h"

#include <gtest/gtest.h>
#include <vector>

#include "osp/media/picture/exif.h"
#include "osp/media/picture/jpeg_codec.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Media {
namespace {

using Graphics::Dimension;

/// Red, but for a blue upper left quarter.
std::string StoredPicture(const Dimension& size, int orientation) {
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const bool isBlue = x < size.width / 2 && y < size.height / 2;
            for (const int value : {isBlue ? 0 : 255, 0, isBlue ? 255 : 0}) {
                pixels.push_back(static_cast<std::uint8_t>(value));
            }
        }
    }
    EncodedPicture encoded;
    ExifInfo info;
    info.orientation = orientation;
    info.size = size;
    const auto exif = BuildExifSegment(info);
    EXPECT_EQ(EncodeJpeg(PackedView(pixels.data(), size, PixelLayout::kRgb), exif, encoded),
              result::kSuccess);
    return {encoded.Bytes().begin(), encoded.Bytes().end()};
}

TEST(PictureWithin, IsUprightAndFillsItsBounds) {
    const Testing::TemporaryFolder folder;
    const struct {
        Dimension stored;
        int orientation;
        Dimension shown;
        bool isBlueLeft;
        bool isBlueUp;
    } cases[] = {
        {{1600, 960}, 1, {626, 376}, true, true},  {{1600, 960}, 3, {626, 376}, false, false},
        {{1600, 960}, 6, {226, 376}, false, true}, {{960, 1600}, 8, {626, 376}, true, false},
        {{6400, 400}, 1, {626, 39}, true, true},   {{64, 48}, 1, {64, 48}, true, true}};
    for (const auto& c : cases) {
        const std::string path = folder / "a.jpg";
        Testing::WriteText(path, StoredPicture(c.stored, c.orientation));
        Base::Block rgba;
        Dimension size;
        ASSERT_EQ(DecodeWithin(path, {626, 376}, rgba, size), result::kSuccess);
        EXPECT_EQ(size, c.shown);
        const auto blueAt = [&](bool left, bool up) {
            const int x = size.width * (left ? 1 : 3) / 4;
            const int y = size.height * (up ? 1 : 3) / 4;
            return rgba.data()[4 * (y * size.width + x) + 2] > 200;
        };
        EXPECT_TRUE(blueAt(c.isBlueLeft, c.isBlueUp)) << c.orientation;
        EXPECT_FALSE(blueAt(!c.isBlueLeft, c.isBlueUp)) << c.orientation;
        const bool isTurned = c.orientation > 4;
        EXPECT_EQ(ReadUprightSize(path),
                  (isTurned ? Dimension{c.stored.height, c.stored.width} : c.stored));
    }
}

}  // namespace
}  // namespace Osp::Media
