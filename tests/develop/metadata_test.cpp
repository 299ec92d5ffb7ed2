// What a developed picture's file says about the picture.
#include "develop/picture_format.h"
#include "osp/media/picture/encoded_picture.h"
#include "osp/media/picture/exif.h"
#include "osp/media/picture/jpeg_codec.h"
#include "osp/media/picture/png_codec.h"
#include "osp/media/picture/upright.h"
#include "tests/develop/develop_fixture.h"
#include "tests/support/colour_profile.h"

namespace Kivo::Testing {
namespace {

using Osp::Media::ExifInfo;

class MetadataTest : public DevelopTest {
  protected:
    /// A JPEG with a segment after its start marker.
    std::string WriteJpeg(const std::string& name, const Picture& picture,
                          const std::string& segment) {
        return Write(name, EncodeJpeg(picture).insert(2, segment));
    }
    ExifInfo ExifOf(const std::string& name) {
        const auto exif = Osp::Media::ReadExif(At(name));
        EXPECT_TRUE(exif);
        return exif.value_or(ExifInfo{});
    }
};

ExifInfo SomeInfo() {
    ExifInfo info;
    info.description = "Our dog";
    info.dateTimeOriginal = "2019:07:14 18:30:05";
    info.offsetTimeOriginal = "+02:00";
    info.software = "Another camera";
    info.orientation = 1;
    info.size = {50, 30};
    return info;
}

std::string SegmentOf(const ExifInfo& info) {
    const std::vector<std::uint8_t> segment = Osp::Media::BuildExifSegment(info);
    return {segment.begin(), segment.end()};
}

TEST_F(MetadataTest, KeepsTheDateAndTellsTheDevelopment) {
    const std::string in =
        WriteJpeg("in.jpg", RandomPicture(50, 30, Look::kGradient, 1), SegmentOf(SomeInfo()));
    Develop({"-t", "TILT", "-e", "Fall", "--hdr", in, "-o", At("out.jpg")});
    const ExifInfo exif = ExifOf("out.jpg");
    EXPECT_EQ(exif.dateTimeOriginal, "2019:07:14 18:30:05");
    EXPECT_EQ(exif.offsetTimeOriginal, "+02:00");
    EXPECT_EQ(exif.description, "TILT (Fall),1X,HDR");
    EXPECT_EQ(exif.software, "KIVO Camera");
    EXPECT_EQ(exif.orientation, 1);
    EXPECT_EQ(exif.size, (Osp::Graphics::Dimension{50, 30}));
    Develop({"--secondary", in, "-o", At("turned.jpg")});
    EXPECT_EQ(ExifOf("turned.jpg").size, (Osp::Graphics::Dimension{30, 50}));
}

std::string Segment(char marker, const std::string& content) {
    const std::size_t length = content.size() + 2;
    return std::string{'\xFF', marker, static_cast<char>(length >> 8), static_cast<char>(length)} +
           content;
}

TEST_F(MetadataTest, FindsTheDateBehindOtherSegments) {
    const std::string before = Segment('\xFE', "a comment") + Segment('\xE1', "http://ns/");
    const std::string in = WriteJpeg("in.jpg", RandomPicture(50, 30, Look::kGradient, 1),
                                     before + SegmentOf(SomeInfo()));
    Develop({in, "-o", At("out.jpg")});
    EXPECT_EQ(ExifOf("out.jpg").dateTimeOriginal, "2019:07:14 18:30:05");
}

TEST_F(MetadataTest, KeepsTheDateOfWhatIsTooLong) {
    // As long as a segment can be, so that a longer description does not fit.
    ExifInfo info = SomeInfo();
    info.offsetTimeOriginal.resize(0xFFFF - SegmentOf(info).size(), ' ');
    const std::string in =
        WriteJpeg("in.jpg", RandomPicture(50, 30, Look::kGradient, 1), SegmentOf(info));
    EXPECT_GT(Read("in.jpg").size(), 65'000U);
    Develop({"-t", "TILT", "-e", "Negative", "--hdr", in, "-o", At("out.jpg")});
    EXPECT_EQ(ExifOf("out.jpg").dateTimeOriginal, "2019:07:14 18:30:05");
    EXPECT_TRUE(ExifOf("out.jpg").offsetTimeOriginal == "+02:00");
    EXPECT_EQ(ExifOf("out.jpg").description, "TILT (Negative),1X,HDR");
}

TEST_F(MetadataTest, KeepsTheColourProfileOfAColouredPicture) {
    const Picture picture = RandomPicture(50, 30, Look::kGradient, 1);
    const auto write = [&](const std::string& kind, std::size_t length) {
        const auto profile = MakeProfile(kind, length);
        std::vector<std::uint8_t> segments;
        Osp::Media::AppendColourProfile(profile, segments);
        WriteJpeg("in.jpg", picture, {segments.begin(), segments.end()});
        Osp::Media::EncodedPicture png;
        EXPECT_EQ(Osp::Media::EncodePng(
                      PackedView(picture.bytes.data(), {50, 30}, Osp::Media::PixelLayout::kRgb),
                      profile, png),
                  result::kSuccess);
        Write("in.png", {png.Bytes().begin(), png.Bytes().end()});
        return profile;
    };
    const auto profileOf = [&](const char* name) {
        const std::string file = Read(name);
        return Tools::ReadColourProfile(
            {reinterpret_cast<const std::uint8_t*>(file.data()), file.size()});
    };
    const auto profile = write("RGB ", 80'000);
    for (const char* in : {"in.jpg", "in.png"}) {
        for (const char* out : {"out.jpg", "out.png"}) {
            Develop({At(in), "-o", At(out)});
            EXPECT_TRUE(profileOf(out) == profile) << in << " to " << out;
            Develop({"--secondary", At(in), "-o", At(out)});
            EXPECT_TRUE(profileOf(out) == profile) << in << " to " << out << ", turned";
        }
    }
    write("GRAY", 200);
    Develop({At("in.jpg"), "-o", At("out.jpg")});
    EXPECT_EQ(Read("out.jpg").find("ICC_PROFILE"), std::string::npos);
}

TEST_F(MetadataTest, InventsNoDate) {
    const std::string in = Write("in.ppm", ToPpm(RandomPicture(50, 30, Look::kGradient, 2)));
    Develop({"-t", "DSLR", in, "-o", At("out.jpg")});
    EXPECT_EQ(ExifOf("out.jpg").dateTimeOriginal, "");
    EXPECT_EQ(ExifOf("out.jpg").description, "DSLR (Normal),1X");
}

/// An EXIF segment written by hand, in the other byte order.
std::string HandWrittenSegment() {
    std::string tiff;
    const auto add = [&tiff](std::uint32_t value, int bytes) {
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
            tiff += static_cast<char>(value >> shift);
        }
    };
    const auto entry = [&add](std::uint32_t tag, std::uint32_t type, std::uint32_t count,
                              std::uint32_t value) {
        add(tag, 2);
        add(type, 2);
        add(count, 4);
        add(value, 4);
    };
    constexpr std::uint32_t kAscii = 2;
    constexpr std::uint32_t kLong = 4;
    add(0x4D4D002A, 4);
    add(8, 4);
    add(4, 2);                      // entries of the first directory, from 8
    entry(0x010F, kAscii, 5, 62);   // maker, at 62
    entry(0x0132, kAscii, 20, 68);  // date of change, at 68
    entry(0x0201, kLong, 1, 62);    // a thumbnail without a length
    entry(0x8825, kLong, 1, 88);    // places, at 88
    add(0, 4);
    tiff += std::string("ACME\0\0", 6) + std::string("2001:02:03 04:05:06\0", 20);
    add(1, 2);
    entry(0x0001, kAscii, 2, 0x4E000000);  // "N"
    add(0, 4);
    const auto length = static_cast<char>(tiff.size() + 8);
    return std::string("\xFF\xE1\0", 3) + length + std::string("Exif\0\0", 6) + tiff;
}

TEST_F(MetadataTest, KeepsWhatElseTheFileTells) {
    const std::string in =
        WriteJpeg("in.jpg", RandomPicture(50, 30, Look::kGradient, 3), HandWrittenSegment());
    Develop({in, "-o", At("out.jpg")});
    const std::string out = Read("out.jpg");
    EXPECT_NE(out.find(std::string("ACME\0", 5)), std::string::npos);
    EXPECT_NE(out.find("2001:02:03 04:05:06"), std::string::npos);
    // The entry of the place in the other byte order: tag 1, type 2, count 2, "N".
    EXPECT_NE(out.find(std::string("\1\0\2\0\2\0\0\0N\0\0\0", 12)), std::string::npos);
    EXPECT_EQ(ExifOf("out.jpg").description, "KIVO (Normal),1X");
}

TEST_F(MetadataTest, ThatIsRubbishDoesNoHarm) {
    std::string segment = HandWrittenSegment();
    for (std::size_t i = 18; i < segment.size(); i += 3) segment[i] = '\xFF';
    const std::string in = WriteJpeg("in.jpg", RandomPicture(50, 30, Look::kGradient, 4), segment);
    Develop({in, "-o", At("out.jpg")});
    EXPECT_EQ(ExifOf("out.jpg").description, "KIVO (Normal),1X");
}

void Turn(const Picture& picture, int orientation, Picture& turned) {
    Osp::Media::TurnUpright(PackedView(picture.bytes.data(), {picture.width, picture.height},
                                       Osp::Media::PixelLayout::kRgb),
                            orientation, turned.bytes.data());
}

TEST_F(MetadataTest, TurnsThePictureUpright) {
    const Picture upright = RandomPicture(48, 32, Look::kGradient, 5);
    for (int orientation = 1; orientation <= 8; ++orientation) {
        // Turning back what was turned: 6 and 8 undo each other, all others themselves.
        const int back = orientation == 6 ? 8 : orientation == 8 ? 6 : orientation;
        const bool isTransposed = Osp::Media::IsTransposed(orientation);
        Picture stored(isTransposed ? 32 : 48, isTransposed ? 48 : 32);
        Turn(upright, back, stored);
        ExifInfo info = SomeInfo();
        info.orientation = orientation;
        const std::string in = WriteJpeg("in.jpg", stored, SegmentOf(info));
        Picture expected(48, 32);
        Turn(ReadJpeg(in), orientation, expected);
        Develop({"-t", "MIX", in, in, "-o", At("out.ppm")});
        ExpectSame(FromPpm(Read("out.ppm")), expected,
                   "orientation " + std::to_string(orientation));
        Develop({in, "-o", At("out.jpg")});
        EXPECT_EQ(ExifOf("out.jpg").orientation, 1);
        EXPECT_EQ(ExifOf("out.jpg").size, (Osp::Graphics::Dimension{48, 32}));
    }
}

}  // namespace
}  // namespace Kivo::Testing
