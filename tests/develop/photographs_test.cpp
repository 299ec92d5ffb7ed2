// What kivo-develop makes of pictures.
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "app/model/camera_types.h"
#include "tests/develop/develop_fixture.h"
#include "tests/support/pictures/plain_composition.h"

namespace Kivo::Testing {
namespace {

constexpr int kFrames[] = {1, 1, 4, 4, 2, 1};

class PhotographsTest : public DevelopTest, public testing::WithParamInterface<int> {
  protected:
    std::vector<Picture> MakeFrames(int width, int height) const {
        return RandomPictures(kFrames[GetParam()], width, height, 70);
    }
    /// The picture that the program has to make of `frames`, which are in `inputs`.
    Picture DevelopAs(const PlainPhotograph& photograph, const std::vector<Picture>& frames,
                      const std::vector<std::string>& inputs, const std::string& output) {
        std::vector<std::string> arguments{"--type", std::to_string(photograph.type), "--effect",
                                           std::to_string(photograph.effect)};
        if (photograph.hdr) arguments.push_back("--hdr");
        if (photograph.secondary) arguments.push_back("--secondary");
        arguments.insert(arguments.end(), inputs.begin(), inputs.end());
        arguments.insert(arguments.end(), {"-o", At(output)});
        Develop(arguments);
        return PlainStored(ComposePlain(photograph, frames, levels_), photograph.secondary);
    }

    const Plain::Levels levels_;
};

INSTANTIATE_TEST_SUITE_P(Types, PhotographsTest, testing::Range(0, 6), [](const auto& info) {
    return std::string(NameOf(CameraType(info.param)));
});

TEST_P(PhotographsTest, AreThePlainOnesWithEveryEffectHdrAndCamera) {
    const std::vector<Picture> frames = MakeFrames(76, 52);
    std::vector<std::string> inputs;
    for (const Picture& frame : frames) {
        inputs.push_back(Write(std::to_string(inputs.size()) + ".ppm", ToPpm(frame)));
    }
    for (int i = 0; i < 40; ++i) {
        const PlainPhotograph photograph{GetParam(), i / 4, i % 2 == 1, i / 2 % 2 == 1};
        const Picture expected = DevelopAs(photograph, frames, inputs, "out.ppm");
        ExpectSame(FromPpm(Read("out.ppm")), expected,
                   "effect " + std::to_string(photograph.effect));
    }
}

TEST_P(PhotographsTest, ComeFromJpegsAndGoToJpegsAsTheLibraryMakesThem) {
    std::vector<Picture> frames;
    std::vector<std::string> inputs;
    for (const Picture& frame : MakeFrames(328, 210)) {
        const std::string jpeg = EncodeJpeg(frame);
        inputs.push_back(Write(std::to_string(inputs.size()) + ".JPG", jpeg));
        frames.push_back(DecodeJpeg(jpeg));
    }
    for (const bool secondary : {false, true}) {
        const Picture expected =
            DevelopAs({GetParam(), 6, secondary, true}, frames, inputs, "out.jpeg");
        ExpectSame(ReadJpeg(At("out.jpeg")), DecodeJpeg(EncodeJpeg(expected)), "JPEG");
    }
}

using FormatsTest = DevelopTest;

TEST_F(FormatsTest, LeaveThePixelsAlone) {
    // A double exposure of a picture and itself is that picture.
    const Picture picture = RandomPicture(61, 47, Look::kNoise, 90);
    std::string input = Write("0.ppm", ToPpm(picture));
    for (const char* name : {"1.png", "2.PNG", "3.ppm", "4.Ppm"}) {
        Develop({"-t", "MIX", input, input, "-o", At(name)});
        input = At(name);
    }
    ExpectSame(FromPpm(Read("4.Ppm")), picture, "PPM to PNG to PPM");
}

using OptionsTest = DevelopTest;

TEST_F(OptionsTest, TakeNamesInAnyCaseAndNumbers) {
    const std::string in = Write("in.ppm", ToPpm(RandomPicture(64, 48, Look::kNoise, 92)));
    const auto developed = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {in, "-o", At("out.ppm")});
        Develop(arguments);
        return Read("out.ppm");
    };
    const std::string expected = developed({"--type", "TILT", "--effect", "B&W"});
    EXPECT_EQ(developed({"-t", "tilt", "-e", "b&w"}), expected);
    EXPECT_EQ(developed({"--type=5", "--effect=3"}), expected);
    EXPECT_EQ(developed({"-e", "bw", "-t", "Tilt"}), expected);
    EXPECT_NE(developed({"-e", "bw"}), expected);
    EXPECT_EQ(developed({}), developed({"-t", "kivo", "-e", "normal"}));
}

TEST_F(OptionsTest, OverwriteAnOlderOutput) {
    const std::string in = Write("in.ppm", ToPpm(RandomPicture(30, 20, Look::kNoise, 93)));
    Write("out.ppm", "old");
    Write(".osp-1-1.tmp", "what a run that was killed has left");
    Develop({in, "-o", At("out.ppm")});
    EXPECT_EQ(FromPpm(Read("out.ppm")).width, 30);
    EXPECT_EQ(Osp::Testing::ReadTree(folder_.Path()).size(), 2U);
}

TEST_F(OptionsTest, ThatWouldReplaceAnInputAreRefused) {
    const std::string in = Write("in.ppm", ToPpm(RandomPicture(30, 20, Look::kNoise, 95)));
    const std::string other = Write("other.ppm", Read("in.ppm"));
    std::filesystem::create_symlink("in.ppm", At("link.ppm"));
    std::filesystem::create_hard_link(in, At("hard.ppm"));
    for (const char* name : {"in.ppm", "link.ppm", "hard.ppm"}) {
        ExpectRefusal({"-t", "MIX", other, in, "-o", At(name)}, 1, "this is one of the inputs");
        ExpectRefusal({"--sheet", in, "-o", At(name)}, 1, "this is one of the inputs");
    }
    ExpectRefusal({At("link.ppm"), "-o", in}, 1, "this is one of the inputs");
}

TEST_F(OptionsTest, FollowALinkToTheOutput) {
    const std::string in = Write("in.ppm", ToPpm(RandomPicture(30, 20, Look::kNoise, 96)));
    std::filesystem::create_directory(At("folder"));
    for (const char* state : {"nothing is there yet", "an older one is there"}) {
        std::filesystem::create_symlink("second.ppm", At("first.ppm"));
        std::filesystem::create_symlink("folder/target.ppm", At("second.ppm"));
        Develop({in, "-o", At("first.ppm")});
        EXPECT_TRUE(std::filesystem::is_symlink(At("first.ppm"))) << state;
        EXPECT_TRUE(std::filesystem::is_symlink(At("second.ppm"))) << state;
        EXPECT_EQ(FromPpm(Read("folder/target.ppm")).width, 30) << state;
        std::filesystem::remove(At("first.ppm"));
        std::filesystem::remove(At("second.ppm"));
        Write("folder/target.ppm", "old");
    }
    std::filesystem::create_symlink("loop.ppm", At("loop.ppm"));
    EXPECT_NE(RunDevelop({in, "-o", At("loop.ppm")}).errors.find("too many symbolic links"),
              std::string::npos);
}

/// Runs a shell's command in `folder`, with the program as $DEVELOP.
int Shell(const std::string& command, const std::string& folder) {
    const std::string line =
        "set -e; cd '" + folder + "'; DEVELOP='" + ProgramFolder() + "/kivo-develop'; " + command;
    return WEXITSTATUS(std::system(line.c_str()));
}

TEST_F(OptionsTest, TakeStandardInputAndOutput) {
    const Picture picture = RandomPicture(300, 200, Look::kGradient, 97);
    Write("in.jpg", EncodeJpeg(picture));
    Write("in.ppm", ToPpm(picture));
    for (const std::string kind : {"jpg", "ppm"}) {
        Develop({"-t", "DSLR", At("in." + kind), "-o", At("file." + kind)});
        ASSERT_EQ(
            Shell("$DEVELOP -t DSLR - -o - < in." + kind + " > stream." + kind, folder_.Path()), 0);
        EXPECT_TRUE(Read("stream." + kind) == Read("file." + kind)) << kind;
    }
    EXPECT_EQ(Shell("$DEVELOP - -o out.png < /dev/null", folder_.Path()), 1);
    EXPECT_EQ(Shell("$DEVELOP in.jpg -o - > /dev/full", folder_.Path()), 1);
    ExpectRefusal({"-t", "MIX", "-", "-", "-o", At("out.ppm")}, 2, "standard input");
    ExpectRefusal({"--batch", folder_.Path(), "-o", "-"}, 2, "standard input and output");
    ExpectRefusal({"--batch", "-", "-o", At("d")}, 2, "standard input and output");
}

TEST_F(OptionsTest, ExplainThemselves) {
    const ProgramResult help = RunDevelop({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* part : {"Usage:", "--secondary", "kivo-develop --sheet", "Fisheye"}) {
        EXPECT_NE(help.output.find(part), std::string::npos) << part;
    }
    EXPECT_TRUE(RunDevelop({"--version"}).output.starts_with("kivo-develop "));
}

TEST_F(OptionsTest, ThatMakeNoSenseAreRefused) {
    const std::string in = Write("in.ppm", ToPpm(RandomPicture(30, 20, Look::kNoise, 94)));
    const std::string out = At("out.ppm");
    constexpr int kUsage = 2;
    ExpectRefusal({}, kUsage, "no output");
    ExpectRefusal({in}, kUsage, "no output");
    ExpectRefusal({"-o", out}, kUsage, "KIVO takes 1 picture, 0 are given");
    ExpectRefusal({in, in, "-o", out}, kUsage, "KIVO takes 1 picture, 2 are given");
    ExpectRefusal({"-t", "MIX", in, "-o", out}, kUsage, "MIX takes 2 pictures, 1 is given");
    ExpectRefusal({"-t", "ACTION", in, in, in, "-o", out}, kUsage, "ACTION takes 4");
    ExpectRefusal({"-t", "QUAD", in, in, in, in, in, "-o", out}, kUsage, "QUAD takes 4");
    for (const char* nobody : {"10", "-1", "TILTED", "Sepia ", "", "1x", "99999999999999999999"}) {
        const std::string name = nobody;
        ExpectRefusal({"--type=" + name, in, "-o", out}, kUsage, "there is no type");
        ExpectRefusal({"--effect=" + name, in, "-o", out}, kUsage, "there is no effect");
    }
    ExpectRefusal({"--type=6", in, "-o", out}, kUsage, "there is no type");
    ExpectRefusal({"--speed", in, "-o", out}, kUsage, "--speed");
    ExpectRefusal({in, "-o"}, kUsage, "-o");
    ExpectRefusal({"--hdr=no", in, "-o", out}, kUsage, "--hdr takes no value");
    ExpectRefusal({"", "-o", out}, kUsage, "empty");
    ExpectRefusal({"--batch", folder_.Path(), in, "-o", At("d")}, kUsage, "no pictures");
    ExpectRefusal({"--batch", folder_.Path(), "-t", "MIX", "-o", At("d")}, kUsage, "MIX");
    ExpectRefusal({"--batch", folder_.Path(), "--sheet", "-o", At("d")}, kUsage, "--sheet");
    ExpectRefusal({"--sheet", "-o", out}, kUsage, "--sheet");
    ExpectRefusal({"--sheet", in, in, in, in, in, "-o", out}, kUsage, "--sheet");
    ExpectRefusal({"--sheet", "-e", "Sepia", in, "-o", out}, kUsage, "--sheet");
}

}  // namespace
}  // namespace Kivo::Testing
