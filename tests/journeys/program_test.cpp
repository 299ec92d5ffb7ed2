// The program from its command line.
#include "tests/support/programs/program.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <vector>

#include "tests/support/camera_screen.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/pictures/subjects.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

namespace fs = std::filesystem;
using Osp::Testing::ReadText;
using Osp::Testing::ReadTree;
using Osp::Testing::TemporaryFolder;
using Osp::Testing::WriteText;
using namespace Testing;

/// Runs the program by way of a shell, as "$KIVO" in `command`, in `folder`; the exit code.
int RunInShell(const TemporaryFolder& folder, const std::string& command) {
    const std::string line = "cd " + folder.Path() + "; KIVO='" + ProgramFolder() +
                             "/kivo-camera --secondary none'; " + command;
    const int status = std::system(line.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Program, SaysWhatIsWrongWithItsArguments) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "pictures");
    WriteText(folder / "pictures/damaged.jpg", "\xFF\xD8\xFF and no more");
    const struct {
        const char* arguments;
        int exitCode;
        const char* said;
    } cases[] = {
        {"--headless --script - --primary nonsense", 2, "nonsense"},
        {"--headless --script - --secondary photos", 2, "photos"},
        {"--headless --script - --primary photos:missing", 2, "missing"},
        {"--headless --script - --primary photos:pictures", 2, "none of the pictures in the fold"},
        {"--headless --script no-script", 1, "no-script"},
        {"--headless --script - --primary none", 1, "no camera"},
        {"--headless --script - --primary none --secondary scene", 1, "--primary none"},
        {"--headless --script pictures", 2, "is a folder"},
        {"--headless --clock sundial", 2, "--clock"},
        {"--unknown", 2, "unknown"},
        {"stray", 2, "stray"},
        {"--headless", 2, "virtual clock"},
        {"--headless=no --script -", 2, "--headless=no"},
        {"--diagnose= --clock real", 2, "--diagnose="},
    };
    for (const auto& c : cases) {
        const std::string command = std::string("$KIVO --data data ") + c.arguments;
        EXPECT_EQ(RunInShell(folder, command + " 2>errors </dev/null"), c.exitCode) << command;
        const std::string errors = ReadText(folder / "errors");
        EXPECT_NE(errors.find(c.said), std::string::npos) << command << ": " << errors;
    }
}

constexpr const char* kTwoPhotographs =
    "await preview\nkey camera\nawait photos 1\nwait 500\nkey camera\nawait photos 2\n";

TEST(Program, SaysThatItsOutputCouldNotBeWritten) {
    const TemporaryFolder folder;
    WriteText(folder / "script", "await preview\nprint screen\n");
    for (const char* arguments : {"--list-cameras", "--diagnose", "--help", "--version",
                                  "--headless --data data --script script"}) {
        SCOPED_TRACE(arguments);
        const std::string command = std::string("$KIVO ") + arguments;
        EXPECT_EQ(RunInShell(folder, command + " >out"), 0);
        EXPECT_NE(ReadText(folder / "out"), "");
        EXPECT_EQ(RunInShell(folder, command + " >/dev/full 2>errors"), 1);
        EXPECT_NE(ReadText(folder / "errors").find("standard output"), std::string::npos);
    }
    // Whoever reads it may go away, which ends no photograph.
    WriteText(folder / "script", std::string("await preview\nprint screen\n") + kTwoPhotographs);
    RunInShell(folder, "$KIVO --headless --data data --script script | true");
    EXPECT_EQ(ReadTree(folder / "data/Media/Images").size(), 2u);
}

TEST(Program, LooksAtAMachineWithoutChangingIt) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "data/Storagecard");
    for (const char* arguments : {"--list-cameras", "--diagnose"}) {
        EXPECT_EQ(RunInShell(folder, std::string("$KIVO --data data ") + arguments + " >/dev/null"),
                  0);
    }
    EXPECT_EQ(std::distance(fs::recursive_directory_iterator(folder / "data"), {}), 1);
}

TEST(Program, TakesOnlyAbsoluteFoldersFromTheEnvironment) {
    const TemporaryFolder folder;
    EXPECT_EQ(RunInShell(folder,
                         "HOME=$PWD/home XDG_DATA_HOME=data XDG_CONFIG_HOME=config $KIVO "
                         "--diagnose >out && HOME= XDG_DATA_HOME= $KIVO --diagnose >empty"),
              0);
    const std::string home = fs::canonical(folder.Path()).string() + "/home";
    const std::string printed = ReadText(folder / "out");
    EXPECT_NE(printed.find(" " + home + "/KIVO\n"), std::string::npos) << printed;
    EXPECT_NE(printed.find(" " + home + "/.local/share/kivo-camera\n"), std::string::npos);
    // The home that the user's account names.
    EXPECT_EQ(ReadText(folder / "empty").find(" .local"), std::string::npos);
    EXPECT_EQ(ReadText(folder / "empty").find(" /KIVO"), std::string::npos);
}

TEST(Program, ManagesWithoutStandardDescriptorsAndWithSmallFilesOnly) {
    const TemporaryFolder folder;
    WriteText(folder / "script", std::string(kTwoPhotographs) + "print screen\n");
    EXPECT_EQ(RunInShell(folder, "$KIVO --headless --data a --script script <&- >&- 2>&-"), 0);
    EXPECT_EQ(ReadTree(folder / "a/Media/Images").size(), 2u);
    for (const auto& [name, content] : ReadTree(folder / "a")) {
        EXPECT_EQ(content.find("MainForm"), std::string::npos) << name << " was taken for output";
    }
    WriteText(folder / "script",
              "await preview\nkey camera\nawait text WARNING\nexpect text writing\n" +
                  Tap(kMessageButton) + "\nexpect photos 0\n");
    EXPECT_EQ(
        RunInShell(folder, "ulimit -f 40; $KIVO --headless --data b --script script 2>errors"), 0);
    EXPECT_NE(ReadText(folder / "errors").find("full"), std::string::npos);
}

/// A program that takes its script from what is sent to it, and has a back camera only.
std::vector<std::string> Listening(const std::string& data, const std::string& primary = "scene") {
    return {"--headless", "--script", "-",           "--data", data,
            "--primary",  primary,    "--secondary", "none"};
}

void Send(CameraProgram& program, std::initializer_list<std::string> lines) {
    for (const std::string& line : lines) program.Send(line);
}

/// Lets a process have no more address space than `most` bytes.
void LimitMemory(int process, rlim_t most) {
    const rlimit limit{most, RLIM_INFINITY};
    ASSERT_EQ(prlimit(process, RLIMIT_AS, &limit, nullptr), 0);
}

rlim_t AddressSpaceOf(int process) {
    rlim_t pages = 0;
    std::ifstream("/proc/" + std::to_string(process) + "/statm") >> pages;
    return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

// The limit comes while the program previews, so that whatever its libraries and its preview take,
// it is the photographs that feel it: they ask for tens of megabytes. It rises, because what one
// was given is kept for the next. The camera has stored pictures, because the library that draws
// the scene does not survive a drawing for which there is no memory.
TEST(Program, WithoutMemoryAPhotographFailsAndTheCameraGoesOn) {
    if (kIsSanitized) GTEST_SKIP() << "a sanitizer's own memory cannot be limited";
    const TemporaryFolder folder;
    const Subjects subjects(1);
    CameraProgram program(Listening(folder.Path(), subjects.Source()));
    const auto run = [&program](std::initializer_list<std::string> lines) {
        Send(program, lines);
        program.Send("print sounds");
        return !program.ReadLine().empty();
    };
    ASSERT_TRUE(run({"await preview"}));
    const rlim_t before = AddressSpaceOf(program.Id());
    ASSERT_GT(before, 0u);
    constexpr int kPresses = 8;
    for (rlim_t i = 1; i <= kPresses; ++i) {
        LimitMemory(program.Id(), before + (8 * i << 20));
        ASSERT_TRUE(run({"key camera", "wait 3000", Tap(kMessageButton), "wait 1000"}))
            << 8 * i << " MB: " << program.Finish().errors;
    }
    const std::size_t stored = ReadTree(folder / "Media/Images").size();
    EXPECT_LT(stored, std::size_t{kPresses}) << "the limit was never felt";

    LimitMemory(program.Id(), RLIM_INFINITY);
    ASSERT_TRUE(run({"key camera", "wait 3000"}));
    const auto photographs = ReadTree(folder / "Media/Images");
    EXPECT_EQ(photographs.size(), stored + 1) << "room again";
    for (const auto& [name, content] : photographs) {
        EXPECT_TRUE(IsWholeJpeg(folder / ("Media/Images/" + name))) << name;
    }
    const ProgramResult result = program.Finish();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_NE(result.errors.find("not stored"), std::string::npos) << result.errors;
}

TEST(Program, FinishesThePairOfAnHdrPhotographWhenItIsEnded) {
    std::signal(SIGHUP, SIG_DFL);  // ignored, it would not be the program's to follow
    for (const int signal : {SIGHUP, SIGTERM, SIGINT}) {
        const TemporaryFolder folder;
        std::vector<std::string> arguments = Listening(folder.Path());
        arguments.insert(arguments.end(), {"--clock", "real"});
        CameraProgram program(arguments);
        Send(program, {"await preview", "wait 200", Tap(kHdrButton), "key camera", "wait 60000"});
        for (int i = 0; i < 60'000 && !fs::exists(folder / "Media/Images/KIVO0000.jpg"); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        kill(program.Id(), signal);
        EXPECT_EQ(program.Finish().exitCode, 0) << signal;
        EXPECT_EQ(ReadTree(folder / "Media/Images").size(), 2u) << signal;
    }
}

TEST(Program, OneInstanceAtATimeUsesADataFolder) {
    const TemporaryFolder folder;
    std::size_t stored = 0;
    for (const std::size_t count : {2U, 4U}) {
        std::vector<std::unique_ptr<CameraProgram>> programs(count);
        for (auto& program : programs) {
            program = std::make_unique<CameraProgram>(Listening(folder.Path()));
        }
        // The one that is not refused waits for its script.
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (std::ranges::count_if(programs, &CameraProgram::HasEnded) + 1 !=
               static_cast<std::ptrdiff_t>(count)) {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        for (const auto& program : programs) {
            const bool isRefused = program->HasEnded();
            if (!isRefused) Send(*program, {"await preview", "key camera", "wait 1500"});
            const ProgramResult result = program->Finish();
            EXPECT_EQ(result.exitCode, isRefused ? 3 : 0) << result.errors;
            EXPECT_EQ(result.errors.find("another KIVO camera") != std::string::npos, isRefused);
        }
        EXPECT_EQ(ReadTree(folder / "Media/Images").size(), ++stored);
    }
}

TEST(Program, RecordsWhatItShows) {
    const TemporaryFolder folder;
    WriteText(folder / "script",
              "await preview\nscreenshot screen.png\nrecord-shows shows\nkey camera\n"
              "await photos 1\n");
    EXPECT_EQ(RunInShell(folder, "$KIVO --headless --data data --primary scene --script script"),
              0);
    for (const char* name : {"screen.png", "shows/show-0000.png"}) {
        EXPECT_TRUE(ReadText(folder / name).starts_with("\x89PNG")) << name;
    }
}

}  // namespace
}  // namespace Kivo
