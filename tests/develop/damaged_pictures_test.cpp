// Files that are not what they seem.
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <unistd.h>

#include "develop/frame.h"
#include "develop/picture_format.h"
#include "tests/develop/develop_fixture.h"
#include "tests/support/faults.h"
#include "tests/support/png.h"

namespace Kivo::Testing {
namespace {

class DamagedPicturesTest : public DevelopTest {
  protected:
    void ExpectUseless(const std::string& name, const std::string& content,
                       const std::string& part) {
        const std::string in = Write(name, content);
        ExpectRefusal({in, "-o", At("out.jpg")}, 1, in + ": " + part);
        ExpectRefusal({"--secondary", in, "-o", At("out.png")}, 1, in + ": " + part);
        ExpectRefusal({"--sheet", in, "-o", At("out.png")}, 1, in + ": " + part);
    }

    const Picture picture_ = RandomPicture(64, 64, Look::kGradient, 3);
    const std::string jpeg_ = EncodeJpeg(picture_);
    const std::string png_ = EncodePng(picture_.bytes, 64, 64, PNG_FORMAT_RGB);

    void SetUp() override { Write("out.jpg", "an older output, which has to stay"); }
};

TEST_F(DamagedPicturesTest, ThatAreNoPicturesAreRefused) {
    const std::string part = "this is not a JPEG, PNG or binary PPM picture";
    ExpectUseless("empty.jpg", "", part);
    ExpectUseless("text.png", "Dear diary", part);
    ExpectUseless("other.ppm", "P5 1 1 255\nx", part);
}

TEST_F(DamagedPicturesTest, WithLyingHeadersAreRefused) {
    const std::string large = "the picture is larger than 64 million pixels or 32767 on a side";
    ExpectUseless("huge.jpg", JpegClaiming(jpeg_, 60000, 60000), large);
    ExpectUseless("huge.png", PngClaiming(png_, 60000, 60000), large);
    ExpectUseless("huge.ppm", "P6 60000 60000 255\nabc", large);
    ExpectUseless("wide.ppm", "P6 40000 1 255\n" + std::string(120000, 'x'), large);
    const std::string damaged = "the picture's header is damaged";
    ExpectUseless("endless.png", PngClaiming(png_, 0x7FFFFFFF, 0x7FFFFFFF), large);
    ExpectUseless("nothing.jpg", JpegClaiming(jpeg_, 0, 64), damaged);
    ExpectUseless("nothing.ppm", "P6 0 64 255\n", damaged);
    ExpectUseless("start.jpg", "\xFF\xD8", damaged);
    ExpectUseless("bare.jpg", "\xFF\xD8\xFF\xD9", damaged);
    std::string deep = jpeg_;
    deep[deep.find("\xFF\xC0") + 4] = 12;  // bits a channel
    ExpectUseless("deep.jpg", deep, "this kind of picture is not supported (12 bits a channel");
}

TEST_F(DamagedPicturesTest, ThatHoldLessThanTheyClaimAreRefused) {
    const std::string part = "the picture is damaged or cut off";
    ExpectUseless("large.jpg", JpegClaiming(jpeg_, 8000, 8000), part);
    ExpectUseless("large.png", PngClaiming(png_, 8000, 8000), part);
    ExpectUseless("large.ppm", "P6 8000 8000 255\nabc", part);
}

TEST_F(DamagedPicturesTest, OfAnotherSizeThanTheRoomForThemAreRefused) {
    for (const std::string& file : {jpeg_, png_, ToPpm(picture_)}) {
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(file.data());
        std::vector<std::uint8_t> pixels(picture_.bytes.size());
        std::string oddity;
        EXPECT_EQ(Tools::DecodePicture(
                      {bytes, file.size()}, {64, 32}, pixels.data(),
                      [](int rows) { ADD_FAILURE() << rows << " rows"; }, oddity),
                  result::kInvalidFormat);
    }
}

TEST_F(DamagedPicturesTest, ThatAreCutOffAnywhereAreRefused) {
    const Picture picture = RandomPicture(90, 60, Look::kNoise, 4);
    const std::string input = Write("in.ppm", ToPpm(picture));
    for (const char* name : {"whole.jpg", "whole.png", "whole.ppm"}) {
        Develop({"-t", "MIX", input, input, "-o", At(name)});
        const std::string whole = Read(name);
        for (int cut = 1; cut < 8; ++cut) {
            const std::string in =
                Write(std::string("cut-") + name,
                      whole.substr(0, whole.size() * static_cast<unsigned>(cut) / 8));
            ExpectRefusal({in, "-o", At("out.jpg")}, 1, in + ": the picture");
        }
    }
}

TEST_F(DamagedPicturesTest, ThatHoldEveryRowAreDevelopedWithAWarning) {
    const std::string good = Write("good.jpg", jpeg_);
    const std::string odd = Write("odd.jpg", jpeg_.substr(0, jpeg_.size() - 2));
    const std::string warning =
        odd + ": warning: the end marker is missing, but the picture is whole\n";
    Develop({"-t", "MIX", good, good, "-o", At("good.ppm")});
    for (const char* type : {"MIX", "--sheet"}) {
        std::vector<std::string> arguments{type, good, odd, "-o", At("odd.ppm")};
        if (type[0] != '-') arguments.insert(arguments.begin(), "-t");
        const ProgramResult result = RunDevelop(arguments);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.errors, "kivo-develop: " + warning);
        const bool isSheet = type[0] == '-';
        EXPECT_TRUE(isSheet || Read("odd.ppm") == Read("good.ppm"));
    }
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
        ASSERT_EQ(
            frame.Load({reinterpret_cast<const std::uint8_t*>(jpeg.data()), jpeg.size()}, false),
            "");
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
