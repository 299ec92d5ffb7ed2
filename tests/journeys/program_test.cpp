// The program from its command line.
#include "tests/support/program.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "tests/support/camera_screen.h"
#include "tests/support/jpeg.h"
#include "tests/support/sanitizers.h"
#include "tests/support/subjects.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

namespace fs = std::filesystem;
using Osp::Testing::ReadText;
using Osp::Testing::ReadTree;
using Osp::Testing::TemporaryFolder;
using Osp::Testing::WriteText;
using namespace Testing;

TEST(Program, SaysWhatIsWrongWithItsArguments) {
    const TemporaryFolder folder;
    const TemporaryFolder pictures;
    WriteText(pictures / "damaged.jpg", "\xFF\xD8\xFF and no more");
    const struct {
        std::vector<std::string> arguments;
        int exitCode;
        const char* said;
    } cases[] = {
        {{"--headless", "--script", "-", "--primary", "nonsense"}, 2, "nonsense"},
        {{"--headless", "--script", "-", "--secondary", "photos"}, 2, "photos"},
        {{"--headless", "--script", "-", "--primary", "photos:" + (folder / "missing")},
         2,
         "missing"},
        {{"--headless", "--script", "-", "--primary", "photos:" + pictures.Path()},
         2,
         "none of the pictures in the folder"},
        {{"--headless", "--script", folder / "no-script"}, 1, "no-script"},
        {{"--headless", "--script", "-", "--primary", "none", "--secondary", "none"},
         1,
         "no camera"},
        {{"--headless", "--script", "-", "--primary", "none"}, 1, "--primary none"},
        {{"--headless", "--script", folder.Path()}, 2, "is a folder"},
        {{"--headless", "--clock", "sundial"}, 2, "--clock"},
        {{"--unknown"}, 2, "unknown"},
        {{"stray"}, 2, "stray"},
        {{"--headless"}, 2, "virtual clock"},
        {{"--headless=no", "--script", "-"}, 2, "--headless=no"},
        {{"--diagnose=", "--clock", "real"}, 2, "--diagnose="},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.said);
        std::vector<std::string> arguments = c.arguments;
        arguments.insert(arguments.end(), {"--data", folder.Path()});
        const ProgramResult result = CameraProgram(arguments).Finish();
        EXPECT_EQ(result.exitCode, c.exitCode);
        EXPECT_NE(result.errors.find(c.said), std::string::npos) << result.errors;
    }
}

TEST(Program, EndsAtTheFirstFailingStepOfAScript) {
    const TemporaryFolder folder;
    WriteText(folder / "script",
              "await preview\n"
              "# nothing was taken\n"
              "expect photos 1\n"
              "key camera\n");
    const ProgramResult result =
        CameraProgram({"--headless", "--data", folder.Path(), "--primary", "scene", "--secondary",
                       "none", "--script", folder / "script"})
            .Finish();
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("line 3: expect photos 1"), std::string::npos) << result.errors;
}

/// Runs the program by way of a shell, as "$KIVO" in `command`, in `folder`; the exit code.
int RunInShell(const TemporaryFolder& folder, const std::string& command) {
    const std::string line = "cd " + folder.Path() + "; KIVO='" + ProgramFolder() +
                             "/kivo-camera --secondary none'; " + command;
    const int status = std::system(line.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
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

/// Lets a process have no more address space than `most` bytes.
void LimitMemory(int process, rlim_t most) {
    const rlimit limit{most, RLIM_INFINITY};
    ASSERT_EQ(prlimit(process, RLIMIT_AS, &limit, nullptr), 0);
}

rlim_t AddressSpaceOf(int process) {
    std::ifstream statm("/proc/" + std::to_string(process) + "/statm");
    rlim_t pages = 0;
    statm >> pages;
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
    CameraProgram program({"--headless", "--script", "-", "--data", folder.Path(), "--primary",
                           subjects.Source(), "--secondary", "none"});
    const auto run = [&program](std::initializer_list<std::string> lines) {
        for (const std::string& line : lines) program.Send(line);
        program.Send("print sounds");
        return !program.ReadLine().empty();
    };
    ASSERT_TRUE(run({"await preview"}));
    const rlim_t before = AddressSpaceOf(program.Id());
    ASSERT_GT(before, 0u);
    int presses = 0;
    for (int megabytes = 8; megabytes <= 64; megabytes += 8) {
        LimitMemory(program.Id(), before + (static_cast<rlim_t>(megabytes) << 20));
        ++presses;
        ASSERT_TRUE(run({"key camera", "wait 3000", Tap(kMessageButton), "wait 1000"}))
            << megabytes << " MB: " << program.Finish().errors;
    }
    const std::size_t stored = ReadTree(folder / "Media/Images").size();
    EXPECT_LT(stored, static_cast<std::size_t>(presses)) << "the limit was never felt";

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

/// Waits until `isSo`; the test fails when that takes too long even for a slow machine.
void Await(const std::function<bool()>& isSo) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!isSo()) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

TEST(Program, FinishesThePairOfAnHdrPhotographWhenItIsEnded) {
    std::signal(SIGHUP, SIG_DFL);  // ignored, it would not be the program's to follow
    for (const int signal : {SIGHUP, SIGTERM, SIGINT}) {
        const TemporaryFolder folder;
        CameraProgram program({"--headless", "--clock", "real", "--script", "-", "--data",
                               folder.Path(), "--secondary", "none"});
        for (const char* line : {"await preview", "wait 200"}) program.Send(line);
        program.Send(Tap(kHdrButton));
        for (const char* line : {"key camera", "wait 60000"}) program.Send(line);
        Await([&] { return fs::exists(folder / "Media/Images/KIVO0000.jpg"); });
        kill(program.Id(), signal);
        EXPECT_EQ(program.Finish().exitCode, 0) << signal;
        EXPECT_EQ(ReadTree(folder / "Media/Images").size(), 2u) << signal;
    }
}

TEST(Program, OneInstanceAtATimeUsesADataFolder) {
    const TemporaryFolder folder;
    std::size_t stored = 0;
    for (const std::ptrdiff_t count : {2, 4}) {
        std::vector<std::unique_ptr<CameraProgram>> programs;
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            programs.push_back(std::make_unique<CameraProgram>(std::vector<std::string>{
                "--headless", "--script", "-", "--data", folder.Path(), "--secondary", "none"}));
        }
        // The one that is not refused waits for its script.
        Await([&] {
            return count - 1 == std::ranges::count_if(programs, [](const auto& program) {
                       return program->HasEnded();
                   });
        });
        if (HasFatalFailure()) return;
        for (const auto& program : programs) {
            const bool isRefused = program->HasEnded();
            if (!isRefused) {
                for (const char* line : {"await preview", "key camera", "wait 1500"}) {
                    program->Send(line);
                }
            }
            const ProgramResult result = program->Finish();
            EXPECT_EQ(result.exitCode, isRefused ? 3 : 0) << result.errors;
            EXPECT_EQ(result.errors.find("another KIVO camera") != std::string::npos, isRefused);
        }
        EXPECT_EQ(ReadTree(folder / "Media/Images").size(), ++stored);
    }
}

// Two data folders that share their photographs: what one lock does not cover.
TEST(Program, TwoThatStoreInOneFolderAtOnceLoseNoPhotograph) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "a/Media/Images");
    fs::create_directories(folder / "b");
    fs::create_directory_symlink("../a/Media", folder / "b/Media");
    constexpr int kEach = 15;
    std::vector<std::unique_ptr<CameraProgram>> programs;
    for (const char* data : {"a", "b"}) {
        programs.push_back(std::make_unique<CameraProgram>(std::vector<std::string>{
            "--headless", "--script", "-", "--data", folder / data, "--secondary", "none"}));
        programs.back()->Send("await preview");
    }
    for (int i = 0; i < kEach; ++i) {
        for (const auto& program : programs) {
            program->Send("key camera");
            program->Send("wait 1500");
        }
    }
    for (const auto& program : programs) EXPECT_EQ(program->Finish().exitCode, 0);
    const auto files = ReadTree(folder / "a/Media/Images");
    EXPECT_EQ(files.size(), 2u * kEach);
    for (const auto& [name, content] : files) {
        EXPECT_TRUE(IsWholeJpeg(folder / "a/Media/Images" + "/" + name)) << name;
    }
}

TEST(Program, RecordsEveryPresentedShow) {
    const TemporaryFolder folder;
    const ProgramResult result =
        RunScript({"--data", folder.Path(), "--primary", "scene", "--secondary", "none"},
                  {"await preview", ("record-shows " + (folder / "shows")).c_str(), "key camera",
                   "await photos 1"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_TRUE(ReadText(folder / "shows/show-0000.png").starts_with("\x89PNG"));
}

}  // namespace
}  // namespace Kivo
