// A folder of pictures.
#include <filesystem>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/develop/develop_fixture.h"
#include "tests/support/faults.h"
#include "tests/support/sanitizers.h"

namespace Kivo::Testing {
namespace {

class BatchTest : public DevelopTest {
  protected:
    void SetUp() override { std::filesystem::create_directory(At("in")); }

    void WritePictures(int count) {
        for (int i = 0; i < count; ++i) {
            const Picture picture =
                RandomPicture(60 + i % 5, 40, Look::kNoise, static_cast<unsigned>(i));
            Write("in/" + std::to_string(i) + ".ppm", ToPpm(picture));
        }
    }
};

TEST_F(BatchTest, DevelopsEveryPictureAsAloneAndListsBadOnes) {
    WritePictures(23);
    Write("in/a.jpg", EncodeJpeg(RandomPicture(50, 40, Look::kGradient, 1)));
    Write("in/B.PNG", Read("in/a.jpg"));
    Write("in/.hidden.jpg", "x");
    Write("in/notes.txt", "x");
    std::filesystem::create_directory(At("in/folder.jpg"));
    Write("in/1b.jpg", "not a picture");
    Write("in/3.ppm", Read("in/3.ppm").substr(0, 4000));
    Write("in/9.png", "");
    const std::string start = "kivo-develop: " + At("in/");
    const std::string strange = ": this is not a JPEG, PNG or binary PPM picture\n";
    for (const auto& [type, effect] : {std::pair{"DSLR", "Beach"}, {"KIVO", "Fisheye"}}) {
        const std::string out = std::string(type) + "/out";
        const ProgramResult result =
            RunDevelop({"-t", type, "-e", effect, "--batch", At("in"), "-o", At(out)});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.output, "24 developed, 3 failed\n");
        EXPECT_EQ(result.errors, start + "1b.jpg" + strange + start +
                                     "3.ppm: the picture is damaged or cut off\n" + start +
                                     "9.png" + strange);
        const auto developed = Osp::Testing::ReadTree(At(out));
        EXPECT_EQ(developed.size(), 24U);
        for (const auto& [name, content] : developed) {
            Develop({"-t", type, "-e", effect, At("in/" + name), "-o", At("alone-" + name)});
            EXPECT_EQ(content, Read("alone-" + name)) << name;
        }
    }
}

TEST_F(BatchTest, RefusesFoldersThatMakeNoSense) {
    ExpectRefusal({"--batch", At("in"), "-o", At("out")}, 1, "no pictures in this folder");
    WritePictures(1);
    const struct {
        const char *in, *out, *said;
    } cases[] = {{"missing", "out", "missing: No such file"},
                 {"in/0.ppm", "out", "0.ppm: Not a directory"},
                 {"in", "in", "this is the input folder"},
                 {"in", "in/.", "this is the input folder"},
                 {"in", "in/0.ppm", "0.ppm: Not a directory"}};
    for (const auto& c : cases) ExpectRefusal({"--batch", At(c.in), "-o", At(c.out)}, 1, c.said);
    EXPECT_FALSE(std::filesystem::exists(At("out")));
}

TEST_F(BatchTest, StopsWhenTheDiskIsFull) {
    constexpr int kPictures = 400;
    WritePictures(kPictures);
    std::filesystem::create_directory(At("out"));
    Osp::Testing::InOwnProcess([&] {
        Osp::Testing::LimitSpace(At("out"), 6000);  // less than one
        const ProgramResult result = RunDevelop({"--batch", At("in"), "-o", At("out")});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_NE(result.errors.find("kivo-develop: the disk is full, "), std::string::npos);
        const auto failed = std::count(result.errors.begin(), result.errors.end(), '\n') - 1;
        EXPECT_GE(failed, 1);
        EXPECT_LT(failed, kPictures) << result.errors;
    });
}

TEST_F(BatchTest, HarmsNoInputThatIsAlsoAnOutput) {
    WritePictures(4);
    std::filesystem::create_directory(At("out"));
    std::filesystem::create_symlink(At("in/2.ppm"), At("out/1.ppm"));
    std::filesystem::create_hard_link(At("in/3.ppm"), At("out/3.ppm"));
    const auto before = Osp::Testing::ReadTree(At("in"));
    const ProgramResult result = RunDevelop({"--batch", At("in"), "-o", At("out")});
    EXPECT_EQ(result.output, "2 developed, 2 failed\n");
    EXPECT_NE(result.errors.find("out/1.ppm: this is one of the inputs"), std::string::npos);
    EXPECT_NE(result.errors.find("out/3.ppm: this is one of the inputs"), std::string::npos);
    EXPECT_TRUE(Osp::Testing::ReadTree(At("in")) == before);
}

// Two of these in memory at once are too many.
TEST_F(BatchTest, StaysBelowAGigabyteHoweverLargeThePicturesAre) {
    if (kIsThreadSanitized) GTEST_SKIP() << "a sanitizer's own memory cannot be limited";
    for (const char* name : {"in/1.ppm", "in/2.ppm", "in/3.ppm"}) {
        Write(name, "P6 8000 8000 255\n");
        std::filesystem::resize_file(At(name), 17 + 3UL * 8000 * 8000);
    }
    Osp::Testing::InOwnProcess([&] {
        const ProgramResult result =
            RunDevelop({"-t", "DSLR", "--batch", At("in"), "-o", At("out")});
        EXPECT_EQ(result.output, "3 developed, 0 failed\n");
        rusage usage;
        ASSERT_EQ(getrusage(RUSAGE_CHILDREN, &usage), 0);
        EXPECT_LT(usage.ru_maxrss, 1'000'000);
    });
}

/// Runs the program on a terminal and returns what it wrote there. Ctrl-C is pressed once
/// `interruptAt` is to be read.
std::string OnTerminal(const std::vector<std::string>& arguments, int exitCode,
                       const std::string& interruptAt = "") {
    const std::string program = ProgramFolder() + "/kivo-develop";
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execv(program.c_str(), words.data());
        _exit(127);
    }
    std::string text;
    bool mayInterrupt = !interruptAt.empty();
    char block[4096];
    for (ssize_t count = 0; (count = read(terminal, block, sizeof block)) > 0;) {
        text.append(block, static_cast<std::size_t>(count));
        if (!mayInterrupt || text.find(interruptAt) == std::string::npos) continue;
        EXPECT_EQ(write(terminal, "\x03", 1), 1);
        mayInterrupt = false;
    }
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == exitCode) << status;
    return text;
}

TEST_F(BatchTest, DrawsItsProgressOnATerminal) {
    WritePictures(7);
    const std::string text = OnTerminal({"--batch", At("in"), "-o", At("out")}, 0);
    for (const char* part : {"] 0 of 7", "] 1 of 7", "] 7 of 7", "#"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part;
    }
    // The bar is taken away before the last line.
    EXPECT_EQ(text.substr(text.rfind('\x1B')), "\x1B[K7 developed, 0 failed\r\n");
}

TEST_F(BatchTest, FinishesWhatItHasBegunWhenInterrupted) {
    constexpr int kPictures = 500;
    const std::string picture = ToPpm(RandomPicture(400, 300, Look::kNoise, 1));
    for (int i = 0; i < kPictures; ++i) Write("in/" + std::to_string(i) + ".ppm", picture);
    const std::string text =
        OnTerminal({"-t", "DSLR", "--batch", At("in"), "-o", At("out")}, 1, "] 9 of");
    const auto developed = Osp::Testing::ReadTree(At("out"));
    EXPECT_GE(developed.size(), 9U);
    EXPECT_LT(developed.size(), std::size_t{kPictures});
    for (const auto& [name, content] : developed) {
        EXPECT_EQ(content, developed.begin()->second) << name;
    }
    const std::string count = std::to_string(developed.size());
    EXPECT_NE(text.find(count + " developed, 0 failed\r\n"), std::string::npos) << text;
    EXPECT_NE(
        text.find("interrupted, " + std::to_string(kPictures - developed.size()) + " left out"),
        std::string::npos);
}

}  // namespace
}  // namespace Kivo::Testing
