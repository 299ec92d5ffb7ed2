// What a developed picture's file says about the picture.
#include "develop/pictures/picture_format.h"
#include "osp/media/picture/encoded_picture.h"
#include "osp/media/picture/exif.h"
#include "osp/media/picture/jpeg_codec.h"
#include "osp/media/picture/png_codec.h"
#include "osp/media/picture/upright.h"
#include "tests/develop/develop_fixture.h"
#include "tests/support/pictures/colour_profile.h"

namespace Kivo::Testing {
namespace {

using Osp::Media::ExifInfo;
using namespace std::string_literals;

class MetadataTest : public DevelopTest {
  protected:
    /// A JPEG with a segment after its start marker.
    std::string WriteJpeg(const std::string& segment,
                          const Picture& picture = RandomPicture(50, 30, Look::kGradient, 1)) {
        return Write("in.jpg", EncodeJpeg(picture).insert(2, segment));
    }
    ExifInfo ExifOf(const std::string& name) {
        const auto exif = Osp::Media::ReadExif(At(name));
        EXPECT_TRUE(exif);
        return exif.value_or(ExifInfo{});
    }
};

ExifInfo SomeInfo() {
    return {.description = "Our dog",
            .dateTimeOriginal = "2019:07:14 18:30:05",
            .offsetTimeOriginal = "+02:00",
            .software = "Another camera",
            .orientation = 1,
            .size = {50, 30}};
}

std::string SegmentOf(const ExifInfo& info) {
    const std::vector<std::uint8_t> segment = Osp::Media::BuildExifSegment(info);
    return {segment.begin(), segment.end()};
}

TEST_F(MetadataTest, KeepsTheDateAndTellsTheDevelopment) {
    const std::string in = WriteJpeg(SegmentOf(SomeInfo()));
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

TEST_F(MetadataTest, FindsTheDateBehindOtherSegments) {
    const std::string before =
        "\xFF\xFE\0\x0B"
        "a comment\xFF\xE1\0\x0C"
        "http://ns/"s;
    Develop({WriteJpeg(before + SegmentOf(SomeInfo())), "-o", At("out.jpg")});
    EXPECT_EQ(ExifOf("out.jpg").dateTimeOriginal, "2019:07:14 18:30:05");
}

TEST_F(MetadataTest, KeepsTheDateOfWhatIsTooLong) {
    // As long as a segment can be, so that a longer description does not fit.
    ExifInfo info = SomeInfo();
    info.offsetTimeOriginal.resize(0xFFFF - SegmentOf(info).size(), ' ');
    const std::string in = WriteJpeg(SegmentOf(info));
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
        WriteJpeg({segments.begin(), segments.end()}, picture);
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
        return Tools::ReadColourProfile(BytesOf(file));
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
const std::string kHandWritten =
    "\xFF\xE1\0\x72"
    "Exif\0\0"
    "MM\0\x2A\0\0\0\x08"
    "\0\x04"                              // entries of the first directory
    "\x01\x0F\0\x02\0\0\0\x05\0\0\0\x3E"  // maker, at 62
    "\x01\x32\0\x02\0\0\0\x14\0\0\0\x44"  // date of change, at 68
    "\x02\x01\0\x04\0\0\0\x01\0\0\0\x3E"  // a thumbnail without a length
    "\x88\x25\0\x04\0\0\0\x01\0\0\0\x58"  // places, at 88
    "\0\0\0\0"
    "ACME\0\0"
    "2001:02:03 04:05:06\0"
    "\0\x01"                         // entries of the places
    "\0\x01\0\x02\0\0\0\x02N\0\0\0"  // "N"
    "\0\0\0\0"s;

TEST_F(MetadataTest, KeepsWhatElseTheFileTells) {
    Develop({WriteJpeg(kHandWritten), "-o", At("out.jpg")});
    const std::string out = Read("out.jpg");
    // The entry of the place in the other byte order: tag 1, type 2, count 2, "N".
    for (const std::string& part :
         {"ACME\0"s, "2001:02:03 04:05:06"s, "\1\0\2\0\2\0\0\0N\0\0\0"s}) {
        EXPECT_NE(out.find(part), std::string::npos) << part;
    }
    EXPECT_EQ(ExifOf("out.jpg").description, "KIVO (Normal),1X");
}

TEST_F(MetadataTest, ThatIsRubbishDoesNoHarm) {
    std::string segment = kHandWritten;
    for (std::size_t i = 18; i < segment.size(); i += 3) segment[i] = '\xFF';
    Develop({WriteJpeg(segment), "-o", At("out.jpg")});
    EXPECT_EQ(ExifOf("out.jpg").description, "KIVO (Normal),1X");
}

TEST_F(MetadataTest, TurnsThePictureUpright) {
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const Picture stored = orientation > 4 ? RandomPicture(32, 48, Look::kGradient, 5)
                                               : RandomPicture(48, 32, Look::kGradient, 5);
        ExifInfo info = SomeInfo();
        info.orientation = orientation;
        const std::string in = WriteJpeg(SegmentOf(info), stored);
        Picture expected(48, 32);
        const Picture decoded = ReadJpeg(in);
        Osp::Media::TurnUpright(PackedView(decoded.bytes.data(), {decoded.width, decoded.height},
                                           Osp::Media::PixelLayout::kRgb),
                                orientation, expected.bytes.data());
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
