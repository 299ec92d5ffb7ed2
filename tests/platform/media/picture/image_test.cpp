#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

#include <osp/media/image.h>

#include "osp/io/storage_map.h"
#include "osp/media/picture/bmp_codec.h"
#include "osp/media/picture/exif.h"
#include "tests/platform/media/picture/picture_bytes.h"
#include "tests/support/camera_fixture.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/product.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_loop.h"

namespace Osp::Media {
namespace {

using Base::ByteBuffer;
using Graphics::Bitmap;
using Graphics::BitmapPixelFormat;
using Testing::ReadText;
using Testing::WriteText;

constexpr const char* kPath = "/Media/Images/KIVO0000.jpg";

class ImageTest : public testing::Test {
  protected:
    ImageTest() {
        EXPECT_EQ(storage_.Prepare(), result::kSuccess);
        EXPECT_EQ(image_.Construct(), result::kSuccess);
    }
    std::unique_ptr<Bitmap> MakeBitmap(const Picture& picture) {
        ByteBuffer rgba;
        EXPECT_EQ(rgba.Construct(picture.width * picture.height * 4), result::kSuccess);
        std::ranges::copy(InLayout(picture, PixelLayout::kRgba, 255), rgba.GetPointer());
        auto bitmap = std::make_unique<Bitmap>();
        EXPECT_EQ(bitmap->Construct(rgba, SizeOf(picture), BitmapPixelFormat::kArgb8888),
                  result::kSuccess);
        return bitmap;
    }
    result Encode(const Bitmap& bitmap, const char* path = kPath, bool overwrite = true) {
        return image_.EncodeToFile(bitmap, ImageFormat::kJpeg, path, overwrite);
    }
    std::string File(const std::string& name = "KIVO0000.jpg") {
        return folder_ / ("Media/Images/" + name);
    }

    Testing::TestLoop test_;
    Testing::TemporaryFolder folder_;
    Io::StorageMap storage_{Testing::StorageIn(folder_.Path())};
    Io::StorageMap::Installed installed_{storage_};
    Image image_;
    Picture picture_ = RandomPicture(31, 17, Look::kGradient, 4);
    std::unique_ptr<Bitmap> bitmap_ = MakeBitmap(picture_);
};

TEST_F(ImageTest, AStoredPhotographIsTheLibrarysJpegWithExif) {
    image_.SetDescription("KIVO (B&W),1.5X");
    test_.Pass(std::chrono::milliseconds(61'500));
    ASSERT_EQ(Encode(*bitmap_), result::kSuccess);
    const std::string file = ReadText(File());
    const std::string bare = Kivo::Testing::EncodeJpeg(picture_);
    ASSERT_GT(file.size(), bare.size());
    const std::size_t added = file.size() - bare.size();
    EXPECT_EQ(file.substr(0, 4), "\xFF\xD8\xFF\xE1");
    EXPECT_TRUE(file.substr(2 + added) == bare.substr(2));
    EXPECT_TRUE(ReadExif(File()) == (ExifInfo{.description = "KIVO (B&W),1.5X",
                                              .dateTimeOriginal = "2026:01:01 12:01:01",
                                              .offsetTimeOriginal = "+00:00",
                                              .software = "Test Camera",
                                              .orientation = 1,
                                              .size = {31, 17}}));

    ASSERT_EQ(Encode(*bitmap_, "/Media/Images/KIVO0001.jpg"), result::kSuccess);
    EXPECT_EQ(ReadExif(File("KIVO0001.jpg"))->description, "") << "of the photograph before it";
}

TEST_F(ImageTest, WhatCannotBeStoredLeavesWhatWasThere) {
    const Bitmap unconstructed;
    EXPECT_EQ(Encode(unconstructed), result::kInvalidArgument);
    EXPECT_EQ(image_.EncodeToFile(*bitmap_, ImageFormat::kBmp, kPath, true), result::kUnsupported);
    EXPECT_EQ(Encode(*bitmap_, "/Res/a.jpg"), result::kPermissionDenied);
    EXPECT_EQ(Encode(*bitmap_, "/Storagecard/a.jpg"), result::kFileNotFound);
    EXPECT_TRUE(Testing::ReadTree(folder_ / "Media").empty());
    WriteText(File(), "older");
    EXPECT_EQ(Encode(*bitmap_, kPath, false), result::kKeyAlreadyExists);
    EXPECT_EQ(ReadText(File()), "older");
    EXPECT_EQ(Encode(*bitmap_), result::kSuccess);
    const auto files = Testing::ReadTree(folder_ / "Media/Images");
    ASSERT_EQ(files.size(), 2u) << "the older one is kept beside it";
    for (const auto& [name, content] : files) {
        EXPECT_EQ(name.starts_with("KIVO"), content != "older") << name;
    }
}

TEST_F(ImageTest, DecodesWhatTheCameraDeliversAndGivesItOutAsBmp) {
    const std::string jpeg = Kivo::Testing::EncodeJpeg(picture_);
    const Picture expected = Kivo::Testing::DecodeJpeg(jpeg);
    ByteBuffer data = SomeBytes(jpeg);
    const auto decode = [&](ImageFormat format) {
        return std::unique_ptr<Bitmap>(image_.DecodeN(data, format, BitmapPixelFormat::kArgb8888));
    };
    EXPECT_EQ(decode(ImageFormat::kPng), nullptr);
    EXPECT_EQ(image_.GetLastResult(), result::kUnsupported);
    const auto bitmap = decode(ImageFormat::kJpeg);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(image_.GetLastResult(), result::kSuccess);
    const std::unique_ptr<ByteBuffer> bmp(image_.EncodeToBufferN(*bitmap, ImageFormat::kBmp));
    ASSERT_NE(bmp, nullptr);
    Bytes wanted(static_cast<std::size_t>(BmpFileBytes({31, 17})));
    EncodeBmp(PackedView(expected.bytes.data(), {31, 17}, PixelLayout::kRgb), wanted.data());
    EXPECT_TRUE(std::ranges::equal(bmp->Bytes(), wanted));
    EXPECT_EQ(image_.EncodeToBufferN(Bitmap(), ImageFormat::kBmp), nullptr);
    EXPECT_EQ(image_.GetLastResult(), result::kInvalidArgument);

    // The picture ends too early.
    data.GetPointer()[jpeg.size() - 60] = 0xFF;
    data.GetPointer()[jpeg.size() - 59] = 0xD9;
    EXPECT_EQ(decode(ImageFormat::kJpeg), nullptr);
    EXPECT_EQ(image_.GetLastResult(), result::kInvalidFormat);
}

}  // namespace
}  // namespace Osp::Media
