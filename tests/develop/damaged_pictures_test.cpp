// Files that are not what they seem.
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <unistd.h>

#include "develop/pictures/frame.h"
#include "develop/pictures/picture_format.h"
#include "tests/develop/develop_fixture.h"
#include "tests/support/faults.h"
#include "tests/support/pictures/png.h"
#include "tests/support/sanitizers.h"

namespace Kivo::Testing {
namespace {

class DamagedPicturesTest : public DevelopTest {
  protected:
    void SetUp() override { Write("out.jpg", "an older output, which has to stay"); }

    const Picture picture_ = RandomPicture(64, 64, Look::kGradient, 3);
    const std::string jpeg_ = EncodeJpeg(picture_);
    const std::string png_ = EncodePng(picture_.bytes, 64, 64, PNG_FORMAT_RGB);
};

TEST_F(DamagedPicturesTest, AreRefusedWithTheReason) {
    const std::string strange = "this is not a JPEG, PNG or binary PPM picture";
    const std::string large = "the picture is larger than 64 million pixels or 32767 on a side";
    const std::string header = "the picture's header is damaged";
    const std::string cutOff = "the picture is damaged or cut off";
    std::string deep = jpeg_;
    deep[deep.find("\xFF\xC0") + 4] = 12;  // bits a channel
    const struct {
        const char* name;
        std::string content;
        std::string reason;
    } cases[] = {
        {"empty.jpg", "", strange},
        {"text.png", "Dear diary", strange},
        {"other.ppm", "P5 1 1 255\nx", strange},
        {"huge.jpg", JpegClaiming(jpeg_, 60000, 60000), large},
        {"huge.png", PngClaiming(png_, 60000, 60000), large},
        {"huge.ppm", "P6 60000 60000 255\nabc", large},
        {"wide.ppm", "P6 40000 1 255\n" + std::string(120000, 'x'), large},
        {"endless.png", PngClaiming(png_, 0x7FFFFFFF, 0x7FFFFFFF), large},
        {"nothing.jpg", JpegClaiming(jpeg_, 0, 64), header},
        {"nothing.ppm", "P6 0 64 255\n", header},
        {"start.jpg", "\xFF\xD8", header},
        {"bare.jpg", "\xFF\xD8\xFF\xD9", header},
        {"deep.jpg", deep, "this kind of picture is not supported (12 bits a channel"},
        {"large.jpg", JpegClaiming(jpeg_, 8000, 8000), cutOff},
        {"large.png", PngClaiming(png_, 8000, 8000), cutOff},
        {"large.ppm", "P6 8000 8000 255\nabc", cutOff},
    };
    for (const auto& c : cases) {
        const std::string in = Write(c.name, c.content);
        for (const char* option : {"--hdr", "--secondary", "--sheet"}) {
            ExpectRefusal({option, in, "-o", At("out.jpg")}, 1, in + ": " + c.reason);
        }
    }
}

TEST_F(DamagedPicturesTest, OfAnotherSizeThanTheRoomForThemAreRefused) {
    for (const std::string& file : {jpeg_, png_, ToPpm(picture_)}) {
        std::vector<std::uint8_t> pixels(picture_.bytes.size());
        std::string oddity;
        EXPECT_EQ(Tools::DecodePicture(
                      BytesOf(file), {64, 32}, pixels.data(),
                      [](int rows) { ADD_FAILURE() << rows << " rows"; }, oddity),
                  result::kInvalidFormat);
    }
}

TEST_F(DamagedPicturesTest, ThatHoldEveryRowAreDevelopedWithAWarning) {
    const std::string good = Write("good.jpg", jpeg_);
    const std::string odd = Write("odd.jpg", jpeg_.substr(0, jpeg_.size() - 2));
    const std::string warning =
        odd + ": warning: the end marker is missing, but the picture is whole\n";
    Develop({"-t", "MIX", good, good, "-o", At("good.ppm")});
    for (const char* what : {"--sheet", "--type=MIX"}) {
        const ProgramResult result = RunDevelop({what, good, odd, "-o", At("odd.ppm")});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.errors, "kivo-develop: " + warning);
    }
    EXPECT_TRUE(Read("odd.ppm") == Read("good.ppm"));
    std::filesystem::create_directory(At("in"));
    Write("in/odd.jpg", Read("odd.jpg"));
    const ProgramResult batch = RunDevelop({"--batch", At("in"), "-o", At("out")});
    EXPECT_EQ(batch.exitCode, 0);
    EXPECT_EQ(batch.output, "1 developed, 0 failed\n");
    EXPECT_NE(batch.errors.find("odd.jpg: warning: the end marker"), std::string::npos);
}

// A progressive picture is collected whole before its first row: here there is room for the rows,
// but not for that.
TEST_F(DamagedPicturesTest, AreNotWhatShortMemoryMeans) {
    if (kIsThreadSanitized) GTEST_SKIP() << "a sanitizer's own memory cannot be limited";
    std::string jpeg = EncodeJpeg(picture_, TJSAMP_420, TJFLAG_PROGRESSIVE);
    jpeg.replace(jpeg.find("\xFF\xC2") + 5, 4, "\x1F\x40\x1F\x40");  // 8000 x 8000
    Osp::Testing::InOwnProcess([&] {
        long pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        const rlim_t most =
            static_cast<rlim_t>(pages) * static_cast<rlim_t>(getpagesize()) + (280U << 20);
        const rlimit limit{most, most};
        ASSERT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
        Tools::Frame frame;
        ASSERT_EQ(frame.Load(BytesOf(jpeg), false), "");
        EXPECT_FALSE(frame.WaitForAll());
        EXPECT_EQ(Tools::DamageInWords(frame.Failure()), "not enough memory");
    });
}

TEST_F(DamagedPicturesTest, OfAnyFrameAreNamed) {
    const std::string good = Write("good.ppm", ToPpm(RandomPicture(40, 40, Look::kNoise, 5)));
    const std::string other = Write("other.ppm", ToPpm(RandomPicture(40, 41, Look::kNoise, 5)));
    const std::string cut = Write("cut.ppm", Read("good.ppm").substr(0, 3000));
    const std::string out = At("out.jpg");
    for (std::size_t i = 0; i < 4; ++i) {
        std::vector<std::string> arguments{"-t", "QUAD", good, good, good, good, "-o", out};
        arguments[2 + i] = cut;
        ExpectRefusal(arguments, 1, cut + ": the picture is damaged");
        arguments[2 + i] = At("missing.ppm");
        ExpectRefusal(arguments, 1, "missing.ppm: no such file");
    }
    ExpectRefusal({"-t", "MIX", good, other, "-o", out}, 1,
                  "this one is 40 x 41 and the first is 40 x 40");
}

TEST_F(DamagedPicturesTest, AreTheOnlyOnesThatLackRoomForTheirType) {
    const std::string out = At("out.ppm");
    const std::string narrow = Write("narrow.ppm", ToPpm(RandomPicture(3, 9, Look::kNoise, 6)));
    const std::string low = Write("low.ppm", ToPpm(RandomPicture(9, 1, Look::kNoise, 6)));
    const std::string dot = Write("dot.ppm", ToPpm(RandomPicture(1, 1, Look::kNoise, 6)));
    ExpectRefusal({"-t", "ACTION", narrow, narrow, narrow, narrow, "-o", out}, 1, "ACTION takes");
    ExpectRefusal({"-t", "ACTION", "--secondary", low, low, low, low, "-o", out}, 1,
                  "ACTION takes");
    ExpectRefusal({"-t", "QUAD", low, low, low, low, "-o", out}, 1, "QUAD takes");
    Develop({"-t", "ACTION", low, low, low, low, "-o", out});
    Develop({"-t", "ACTION", "--secondary", narrow, narrow, narrow, narrow, "-o", out});
    for (const char* type : {"KIVO", "DSLR", "TILT"}) {
        for (const char* effect : {"Fisheye", "Concave", "Edge", "Mirror"}) {
            Develop({"-t", type, "-e", effect, "--hdr", dot, "-o", out});
        }
    }
}

TEST_F(DamagedPicturesTest, AreNotTheOnlyTrouble) {
    const std::string in = Write("in.ppm", ToPpm(RandomPicture(20, 20, Look::kNoise, 7)));
    ExpectRefusal({At("missing.jpg"), "-o", At("out.jpg")}, 1, "missing.jpg: no such file");
    ExpectRefusal({folder_.Path(), "-o", At("out.jpg")}, 1,
                  folder_.Path() + ": this is not a regular file");
    std::filesystem::create_directory(At("folder.jpg"));
    ExpectRefusal({in, "-o", At("folder.jpg")}, 1, "folder.jpg: this is a folder");
    ExpectRefusal({in, "-o", At("no/such/folder.jpg")}, 1, "folder.jpg: no such file or folder");
    for (const char* name : {"out", "out.gif", "jpg", ".jpg", "out.jpg.bak"}) {
        ExpectRefusal({in, "-o", At(name)}, 1, "the extension is none of");
    }
}

}  // namespace
}  // namespace Kivo::Testing
