// The program over many photographs, and killed while it stores them.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <thread>

#include "osp/app/registry_file.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/programs/program.h"
#include "tests/support/programs/usage.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

namespace fs = std::filesystem;
using Osp::Testing::ReadTree;
using Osp::Testing::TemporaryFolder;
using namespace Testing;
using namespace std::chrono_literals;

/// Of any name; none when there is no such folder.
std::ptrdiff_t CountFiles(const fs::path& folder) {
    std::error_code none;
    return std::distance(fs::directory_iterator(folder, none), {});
}

/// Lets the program take photographs until it has `count`, and waits for that.
void TakeUntil(CameraProgram& program, int& taken, int count) {
    for (; taken < count; ++taken) {
        program.Send("key camera");
        program.Send("await photos " + std::to_string(taken + 1));
    }
    program.Send("print sounds");
    EXPECT_NE(program.ReadLine(), "");
}

TEST(Endurance, TwoHundredPhotographsTakeNoMoreThanTwenty) {
    const TemporaryFolder folder;
    CameraProgram program({"--headless", "--script", "-", "--data", folder.Path(), "--primary",
                           "scene", "--secondary", "scene"});
    program.Send("await preview");
    int taken = 0;
    TakeUntil(program, taken, 20);
    const Osp::Testing::Usage early = Osp::Testing::UsageOf(program.Id());
    TakeUntil(program, taken, 200);
    const Osp::Testing::Usage late = Osp::Testing::UsageOf(program.Id());
    const ProgramResult result = program.Finish();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(CountFiles(folder / "Media/Images"), 200);
    EXPECT_EQ(late.descriptors, early.descriptors);
    // Threads of the pool come and go with the work.
    EXPECT_LE(late.threads, early.threads + 1);
    if (kIsSanitized) return;
    constexpr long kSlackKb = 2048;
    EXPECT_LE(late.memoryKb, early.memoryKb + kSlackKb);
    EXPECT_LE(late.memoryKb, 120 * 1024);
}

// Camera types; QUAD, which takes two seconds until it stores something, comes but once.
constexpr int kTurns[] = {0, 1, 2, 4, 5, 0, 1, 4, 5, 2, 3};

void AwaitMoreFiles(const fs::path& folder, std::ptrdiff_t count) {
    const auto deadline = std::chrono::steady_clock::now() + 60s;
    while (CountFiles(folder) <= count) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "nothing is stored";
        std::this_thread::sleep_for(500us);
    }
}

void UseCameraType(const std::string& dataFolder, int type) {
    fs::create_directories(dataFolder + "/kivo-camera");
    Osp::App::RegistryFile registry(dataFolder + "/kivo-camera/registry.ini");
    registry.Put("CAM_TYPE", std::to_string(type));
    ASSERT_EQ(registry.Save(), result::kSuccess);
}

TEST(Endurance, KilledWhileStoringItLeavesWholePhotographsOnly) {
    const TemporaryFolder folder;
    const std::string images = folder / "Media/Images";
    std::mt19937 random(20260101);
    std::map<std::string, std::string> before;
    constexpr int kKills = kIsSanitized ? 10 : 100;
    for (int i = 0; i < kKills; ++i) {
        UseCameraType(folder.Path(), kTurns[static_cast<std::size_t>(i) % std::size(kTurns)]);
        CameraProgram program({"--headless", "--clock", "real", "--script", "-", "--data",
                               folder.Path(), "--primary", "scene", "--secondary", "scene"});
        program.Send("await preview");
        program.Send("print sounds");
        EXPECT_NE(program.ReadLine(), "") << "it starts again";
        const std::ptrdiff_t known = CountFiles(images);
        for (int press = 0; press < 20; ++press) {
            program.Send("key camera");
            program.Send("wait 50");
        }
        AwaitMoreFiles(images, known);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 100'000));
        program.Kill();
        const auto after = ReadTree(images);
        for (const auto& [name, content] : before) {
            ASSERT_TRUE(after.contains(name)) << name << " was lost";
            ASSERT_TRUE(after.at(name) == content) << name << " was changed";
        }
        for (const auto& [name, content] : after) {
            if (before.contains(name) || !name.starts_with("KIVO")) continue;
            ASSERT_TRUE(IsWholeJpeg(images + "/" + name)) << name;
        }
        before = after;
        std::erase_if(before, [](const auto& file) { return !file.first.starts_with("KIVO"); });
    }
    EXPECT_GT(before.size(), static_cast<std::size_t>(kKills / 4));
    const ProgramResult last =
        RunScript({"--data", folder.Path(), "--primary", "scene", "--secondary", "scene"},
                  {"await preview", "print photos", "key camera",
                   ("await photos " + std::to_string(before.size() + 1)).c_str()});
    EXPECT_EQ(last.exitCode, 0) << last.errors;
    for (const auto& [name, content] : ReadTree(images)) {
        EXPECT_TRUE(name.starts_with("KIVO")) << name << " was left over";
    }
}

}  // namespace
}  // namespace Kivo
