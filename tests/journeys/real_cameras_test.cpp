// From the shutter to the file through PipeWire, with cameras that behave and cameras that do not.
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/camera_screen.h"
#include "tests/support/pictures/colour_bars.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/programs/camera_stack.h"
#include "tests/support/programs/program.h"
#include "tests/support/programs/usage.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

using namespace Testing;
using namespace std::chrono_literals;
using nlohmann::json;
using Osp::Testing::CameraStack;
using Osp::Testing::TemporaryFolder;
using Osp::Testing::VirtualCamera;
namespace Bars = Osp::Testing;

/// The program with real time, on a data folder of its own.
class Camera {
  public:
    explicit Camera(const std::string& primary, const std::string& secondary = "none",
                    const std::map<std::string, std::string>& environment = {})
        : program_({"--headless", "--clock", "real", "--data", folder_.Path(), "--primary", primary,
                    "--secondary", secondary, "--script", "-"},
                   environment) {}

    void Do(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) program_.Send(line);
    }
    json Print(const std::string& what) {
        program_.Send("print " + what);
        const std::string line = program_.ReadLine();
        return line.empty() ? json() : json::parse(line);
    }
    bool IsConnected() { return Print("cameras")["cameras"]["primary"]["connected"]; }
    /// Whether it becomes so within that time.
    bool Becomes(bool isConnected, std::chrono::milliseconds limit = 6s) {
        return Osp::Testing::Within(limit, [&] { return IsConnected() == isConnected; });
    }
    std::size_t PhotoCount() { return Print("photos")["photos"].size(); }
    Picture Photo(int number) {
        return ReadJpeg(folder_ / "Media/Images/KIVO000" + std::to_string(number) + ".jpg");
    }
    ProgramResult Finish() { return program_.Finish(); }
    CameraProgram& Program() { return program_; }

  private:
    TemporaryFolder folder_;
    CameraProgram program_;
};

/// The bar that a pixel of a photograph belongs to, by its hue; the middle of each type's picture
/// keeps it.
int BarAt(const Picture& picture, int x, int y) {
    const std::uint8_t* const pixel =
        &picture.bytes[static_cast<std::size_t>(3 * (y * picture.width + x))];
    for (int bar = Bars::kYellow; bar < Bars::kBlack; ++bar) {
        const Bars::BarColour& colour = Bars::kBarColours[static_cast<std::size_t>(bar)];
        const auto fits = [](int seen, int full) { return full == 0 ? seen < 60 : seen > 120; };
        if (fits(pixel[0], colour.red) && fits(pixel[1], colour.green) &&
            fits(pixel[2], colour.blue)) {
            return bar;
        }
    }
    return -1;
}

std::string SizeOf(const Picture& picture) {
    return std::to_string(picture.width) + "x" + std::to_string(picture.height);
}

void ExpectBars(const Picture& photo, std::vector<std::pair<int, int>> barsAtPercent) {
    for (const auto& [bar, percent] : barsAtPercent) {
        EXPECT_EQ(BarAt(photo, photo.width * percent / 100, photo.height / 2), bar)
            << percent << " % of " << photo.width;
    }
}

class RealCamerasTest : public testing::Test {
  protected:
    CameraStack stack_;
};

TEST_F(RealCamerasTest, AreBothSeenUprightInTheirColoursInEveryFormat) {
    for (const std::string format : {"I420", "NV12", "YUY2", "MJPG"}) {
        SCOPED_TRACE(format);
        VirtualCamera back("back", {"--mode", format + ":1280x960@30", "--facing", "back"});
        VirtualCamera front("aaa", {"--mode", format + ":1280x720@30", "--facing", "front"});
        Camera camera("auto", "auto");
        camera.Do({"await preview", "key camera", "await photos 1", "await preview",
                   Tap(kSwapButton), "wait 300", "await preview", "key camera", "await photos 2"});
        const json cameras = camera.Print("cameras");
        EXPECT_EQ(cameras["cameras"]["primary"]["source"], "pipewire:back");
        EXPECT_EQ(cameras["cameras"]["secondary"]["inUse"], true);
        ASSERT_EQ(camera.PhotoCount(), 2u) << camera.Finish().errors;
        const Picture shot = camera.Photo(0);
        EXPECT_EQ(SizeOf(shot), "1280x960");
        ExpectBars(shot, {{Bars::kYellow, 20},
                          {Bars::kCyan, 32},
                          {Bars::kGreen, 44},
                          {Bars::kMagenta, 56},
                          {Bars::kRed, 68},
                          {Bars::kBlue, 80}});
        const Picture portrait = camera.Photo(1);
        EXPECT_EQ(SizeOf(portrait), "480x640");
        ExpectBars(portrait, {{Bars::kGreen, 45}, {Bars::kMagenta, 55}, {Bars::kRed, 85}});
        EXPECT_EQ(camera.Finish().exitCode, 0);
        if (HasFailure()) return;
    }
}

TEST_F(RealCamerasTest, OfOddSizesAndRatesServeAsWell) {
    const std::vector<std::string> modes[] = {
        {"YUY2:320x240@10"}, {"MJPG:1920x1080@60", "I420:1920x1080@5"}, {"NV12:642x362@24"}};
    for (const auto& list : modes) {
        SCOPED_TRACE(list.front());
        std::vector<std::string> options;
        for (const std::string& mode : list) options.insert(options.end(), {"--mode", mode});
        VirtualCamera device("odd", options);
        Camera camera("pipewire:odd");
        camera.Do({"await preview", "key camera", "await photos 1"});
        ASSERT_EQ(camera.PhotoCount(), 1u) << camera.Finish().errors;
        device.Await("streaming " + list.front().substr(0, 4) + " " + list.front().substr(5));
        const Picture photo = camera.Photo(0);
        EXPECT_EQ(SizeOf(photo), "1280x960");
        ExpectBars(photo, {{Bars::kGreen, 45}, {Bars::kMagenta, 55}});
    }
}

TEST_F(RealCamerasTest, ThatMisbehaveAreDisconnectedUntilTheyMend) {
    VirtualCamera device("camera", {"--mode", "I420:1280x960@30", "--mode", "MJPG:640x480@30"});
    Camera camera("pipewire");
    camera.Do({"await preview"});
    const struct {
        const char* fault;
        const char* cure;
    } cases[] = {{"stall", "go"}, {"vanish", "return"}, {"damage", "ok"},
                 {"short", "ok"}, {"stride 100", "ok"}, {"stride 1000000", "ok"}};
    std::size_t photos = 0;
    for (const auto& [fault, cure] : cases) {
        SCOPED_TRACE(fault);
        device.Send(fault);
        ASSERT_TRUE(camera.Becomes(false));
        camera.Do({"key camera", "wait 300"});
        EXPECT_EQ(camera.PhotoCount(), photos) << "of a camera that is not there";
        EXPECT_EQ(camera.Print("sounds")["sounds"], json::array());
        device.Send(cure);
        ASSERT_TRUE(camera.Becomes(true));
        camera.Do({"key camera", "await photos " + std::to_string(++photos)});
        ASSERT_EQ(camera.PhotoCount(), photos) << camera.Finish().errors;
        EXPECT_EQ(camera.Print("sounds")["sounds"].size(), 1u);
    }
    device.Send("size 640x480");
    camera.Do({"wait 500", "await preview"});
    ASSERT_TRUE(camera.Becomes(true));
    EXPECT_EQ(camera.Finish().exitCode, 0);
}

TEST_F(RealCamerasTest, OutliveTheDaemon) {
    VirtualCamera device("camera", {"--mode", "MJPG:1280x960@30"});
    Camera camera("pipewire:camera");
    camera.Do({"await preview"});
    stack_.KillDaemon();
    ASSERT_TRUE(camera.Becomes(false));
    stack_.Start();
    device.AwaitReady();
    ASSERT_TRUE(camera.Becomes(true));
    camera.Do({"key camera", "await photos 1"});
    EXPECT_EQ(camera.PhotoCount(), 1u) << camera.Finish().errors;

    // In the background it is let go at once, and what goes meanwhile is found again.
    camera.Do({"background", "wait 100"});
    EXPECT_EQ(camera.Print("cameras")["cameras"]["primary"]["inUse"], false);
    device.Await("paused");
    device.Vanish();
    device.Return();
    camera.Do({"foreground", "await preview", "key camera", "await photos 2"});
    EXPECT_EQ(camera.PhotoCount(), 2u) << camera.Finish().errors;
}

TEST_F(RealCamerasTest, OneThatIsInUseElsewhereGivesTheBoxAndTheEnd) {
    VirtualCamera device("camera");
    Camera other("pipewire:camera", "none", {{"PIPEWIRE_PROPS", "{ node.exclusive = true }"}});
    other.Do({"await preview"});
    ASSERT_TRUE(other.IsConnected());
    Camera camera("pipewire:camera");
    camera.Do({"wait 1000"});
    const json screen = camera.Print("screen");
    EXPECT_NE(screen.dump().find("Camera is already being"), std::string::npos) << screen;
    camera.Do({"wait 3000", "key camera", "wait 1000", "expect photos 0"});
    EXPECT_TRUE(Osp::Testing::Within(10s, [&] { return camera.Program().HasEnded(); }));
}

TEST_F(RealCamerasTest, AreListedAndDiagnosed) {
    VirtualCamera device("one", {"--description", "The \"One\"", "--mode", "YUY2:640x480@30",
                                 "--mode", "MJPG:1280x720@30", "--facing", "front"});
    Camera camera("pipewire:one");
    camera.Do({"await preview"});
    ASSERT_TRUE(camera.IsConnected());
    const auto run = [](std::vector<std::string> arguments) {
        return CameraProgram(arguments).Finish().output;
    };
    const json list = json::parse(run({"--list-cameras", "--json"}));
    ASSERT_EQ(list.size(), 1u) << list;
    EXPECT_EQ(list[0]["source"], "pipewire:one");
    EXPECT_EQ(list[0]["name"], "The \"One\"");
    EXPECT_EQ(list[0]["looks"], "front");
    EXPECT_EQ(list[0]["modes"][1],
              (json{{"format", "MJPEG"}, {"width", 1280}, {"height", 720}, {"framesASecond", 30}}));
    EXPECT_EQ(list[0]["users"], json::array({"kivo-camera"}));
    const std::string text = run({"--list-cameras"});
    for (const char* part : {"primary      pipewire:one", "secondary    none", "The \"One\"",
                             "MJPEG: 1280x720@30", "in use by: kivo-camera"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part << " is not in " << text;
    }
    stack_.KillSessionManager();
    EXPECT_NE(run({"--diagnose"}).find("wireplumber"), std::string::npos);
    stack_.KillDaemon();
    const json diagnosis = json::parse(run({"--diagnose", "--json"}));
    EXPECT_EQ(diagnosis["primary"], "scene");
    EXPECT_EQ(diagnosis["cameras"], json::array());
    EXPECT_NE(diagnosis["backends"][0]["problems"].dump().find("no PipeWire daemon"),
              std::string::npos)
        << diagnosis;
}

/// KIVO_CAMERA_CYCLES asks for more than an ordinary run has.
int Cycles() {
    const char* const asked = std::getenv("KIVO_CAMERA_CYCLES");
    return asked == nullptr ? 20 : std::atoi(asked);
}

TEST_F(RealCamerasTest, SwitchedOnAndOffAndPluggedOverAndOverTakeNoMore) {
    VirtualCamera device("camera", {"--mode", "MJPG:1280x960@30"});
    Camera camera("pipewire:camera");
    const auto switchOver = [&](int times) {
        for (int i = 0; i < times; ++i) {
            camera.Do({"background", "foreground", "await preview", "key camera", "wait 100"});
        }
        ASSERT_TRUE(camera.Becomes(true));
    };
    const auto plugOver = [&](int times) {
        for (int i = 0; i < times && !HasFailure(); ++i) {
            device.Vanish();
            ASSERT_TRUE(camera.Becomes(false));
            device.Return();
            ASSERT_TRUE(camera.Becomes(true)) << "plugged for the " << i << ". time";
        }
    };
    camera.Do({"await preview"});
    switchOver(8);
    plugOver(4);
    const Osp::Testing::Usage early = Osp::Testing::UsageOf(camera.Program().Id());
    switchOver(Cycles());
    plugOver(Cycles() / 4);
    const std::size_t photos = camera.PhotoCount();
    camera.Do({"await preview", "key camera", "await photos " + std::to_string(photos + 1)});
    EXPECT_EQ(camera.PhotoCount(), photos + 1) << "a dead preview; " << camera.Finish().errors;
    const Osp::Testing::Usage late = Osp::Testing::UsageOf(camera.Program().Id());
    EXPECT_LE(late.descriptors, early.descriptors);
    EXPECT_LE(late.threads, early.threads + 1);
    if (!kIsSanitized) {
        EXPECT_LE(late.memoryKb, early.memoryKb + 3072);
    }
    const ProgramResult result = camera.Finish();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
}

}  // namespace
}  // namespace Kivo
