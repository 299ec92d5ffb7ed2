#include "osp/media/picture/picture_file.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <utility>

#include "tests/platform/media/picture/picture_bytes.h"
#include "tests/support/jpeg.h"
#include "tests/support/png.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Media {
namespace {

using Graphics::Dimension;
using Kivo::Testing::EncodeJpeg;
using Kivo::Testing::EncodePng;
using Testing::TemporaryFolder;
using Testing::WriteText;

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
        EXPECT_EQ(DecodePicture(folder / name, PixelLayout::kRgb, pixels, size), result::kSuccess);
        EXPECT_EQ(size, (Dimension{64, 48}));
    }
    EXPECT_TRUE(std::ranges::equal(std::span(pixels.data(), pixels.size()), picture.bytes))
        << "PNG loses nothing";
    const std::pair<const char*, result> failures[] = {{"c.jpg", result::kInvalidFormat},
                                                       {"d.jpg", result::kInvalidFormat},
                                                       {"missing", result::kFileNotFound}};
    for (const auto& [name, expected] : failures) {
        FileKind kind{};
        Dimension size;
        EXPECT_EQ(ReadFileKind(folder / name, kind), expected);
        EXPECT_EQ(DecodePicture(folder / name, PixelLayout::kRgb, pixels, size), expected);
    }
}

TEST(PictureFile, IsNotReadWhenItIsTooLargeForAPicture) {
    const TemporaryFolder folder;
    WriteText(folder / "a.jpg", EncodeJpeg(RandomPicture(64, 48, Look::kGradient, 8)));
    std::filesystem::resize_file(folder / "a.jpg", kMostFileBytes + 1);
    EncodedPicture bytes;
    EXPECT_EQ(ReadPictureBytes(folder / "a.jpg", bytes), result::kOutOfRange);
}

}  // namespace
}  // namespace Osp::Media
