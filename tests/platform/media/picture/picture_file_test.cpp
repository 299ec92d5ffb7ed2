#include "osp/media/picture/picture_file.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "tests/platform/media/picture/picture_bytes.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/pictures/png.h"
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
    WriteText(folder / "e.jpg", "\xFF\xD8\xFF");
    WriteText(folder / "f.png", "\x89PNG\r\n\x1A\n and no more");
    Base::Block pixels;
    for (const char* name : {"a.png", "b.jpg"}) {
        FileKind kind{};
        Dimension size;
        EXPECT_EQ(ReadFileKind(folder / name, kind), result::kSuccess);
        EXPECT_EQ(kind, name[0] == 'a' ? FileKind::kJpeg : FileKind::kPng);
        EXPECT_EQ(DecodePicture(folder / name, PixelLayout::kRgb, pixels, size), result::kSuccess);
        EXPECT_EQ(size, (Dimension{64, 48}));
    }
    EXPECT_TRUE(std::ranges::equal(std::span(pixels.data(), pixels.size()), picture.bytes))
        << "PNG loses nothing";
    for (const char* name : {"c.jpg", "d.jpg", "e.jpg", "f.png", "missing"}) {
        Dimension size;
        EXPECT_EQ(DecodePicture(folder / name, PixelLayout::kRgb, pixels, size),
                  name[0] == 'm' ? result::kFileNotFound : result::kInvalidFormat)
            << name;
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
