// The camera in a real window, used with real X events.
#include <X11/keysym.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/camera_screen.h"
#include "tests/support/programs/fake_screen_saver.h"
#include "tests/support/programs/program.h"
#include "tests/support/programs/x_server.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

using nlohmann::json;
using namespace Testing;

class WindowTest : public testing::Test {
  protected:
    explicit WindowTest(const std::string& sessionBus = "disabled:",
                        const std::vector<std::string>& options = {})
        : camera_(Arguments(options),
                  {{"DISPLAY", x_.Name()},
                   {"GDK_BACKEND", "x11"},
                   {"DBUS_SESSION_BUS_ADDRESS", sessionBus},
                   {"GTK_A11Y", "none"},
                   // Toolkit and display driver keep things to the end, and leave no name behind.
                   {"ASAN_OPTIONS", "detect_leaks=0"}}) {
        camera_.Send("await preview 20000");
        window_ = x_.FindWindow("KIVO Camera");
        EXPECT_NE(window_, 0u);
        Wait(300);  // a window takes input once it has been laid out
    }

    std::vector<std::string> Arguments(const std::vector<std::string>& options) const {
        std::vector<std::string> all{"--script",  "-",     "--data",      folder_.Path(),
                                     "--primary", "scene", "--secondary", "scene"};
        all.insert(all.end(), options.begin(), options.end());
        return all;
    }

    /// Returns when the camera has done everything that was sent, and then waited.
    void Wait(int ms) {
        camera_.Send("wait " + std::to_string(ms));
        Ask("print sounds");
    }

    /// What a script command prints.
    json Ask(const std::string& command) {
        camera_.Send(command);
        const std::string line = camera_.ReadLine();
        if (!line.empty()) return json::parse(line);
        ADD_FAILURE() << command << ": the camera has ended: " << camera_.Finish().errors;
        return json::object();
    }
    std::vector<int> BoundsOf(const std::string& name) {
        const json screen = Ask("print screen");
        for (const json& control : screen["controls"]) {
            if (control["text"] == name) return control["bounds"];
        }
        ADD_FAILURE() << name << " is not on the screen";
        return {0, 0, 0, 0};
    }
    void Click(int x, int y) {
        x_.MoveTo(x, y);
        x_.Press();
        x_.Release();
    }
    /// Returns when the camera has noticed.
    void Focus(unsigned long window) {
        x_.Focus(window);
        Wait(500);
    }
    void AwaitPhotos(int count) { camera_.Send("await photos " + std::to_string(count)); }
    void EndWell() {
        const ProgramResult result = camera_.Finish();
        EXPECT_EQ(result.exitCode, 0) << result.errors;
    }

    Osp::Testing::TemporaryFolder folder_;
    XServer x_;
    CameraProgram camera_;
    unsigned long window_ = 0;
};

TEST_F(WindowTest, TheMouseAndTheCameraKeysTakePhotographs) {
    Click(kShutterButton.x, kShutterButton.y);
    AwaitPhotos(1);
    int count = 1;
    for (const unsigned long key : {XK_space, XK_Return}) {
        Wait(300);
        x_.Key(key);
        AwaitPhotos(++count);
    }
    EndWell();
}

TEST_F(WindowTest, TheKeyboardWalksTheButtonsAndEscapeLeadsBack) {
    x_.Key(XK_Tab);
    x_.Key(XK_Return);
    camera_.Send("await form OptionForm");
    Wait(100);
    x_.Key(XK_Escape);
    camera_.Send("await form MainForm");
    camera_.Send("await preview");
    Wait(100);
    x_.Key(XK_space);
    AwaitPhotos(1);
    EndWell();
}

TEST_F(WindowTest, PositionsAreExactAtAnyWindowSize) {
    struct {
        int width, height, left, top, scale;
    } const sizes[] = {
        {800, 480, 0, 0, 1}, {1600, 960, 0, 0, 2}, {1000, 480, 100, 0, 1}, {800, 1000, 0, 260, 1}};
    for (const auto& size : sizes) {
        SCOPED_TRACE(std::to_string(size.width) + " x " + std::to_string(size.height));
        x_.Resize(window_, size.width, size.height);
        Wait(500);
        const std::vector<int> before = BoundsOf("Zoom");
        const auto click = [&](int x) {
            Click(x * size.scale + size.left, 20 * size.scale + size.top);
            Wait(500);
        };
        click(505 - 2);
        EXPECT_EQ(BoundsOf("Zoom"), before) << "two pixels beside it";
        click(505 + 1);
        EXPECT_NE(BoundsOf("Zoom"), before) << "on its edge: it comes out, or goes back";
    }
    EndWell();
}

TEST_F(WindowTest, MinimisingStopsTheCameraAndRestoringWakesIt) {
    x_.SetMinimised(window_, true);
    Wait(500);
    x_.Key(XK_space);
    Wait(1000);
    camera_.Send("expect photos 0");
    x_.SetMinimised(window_, false);
    Wait(1000);
    camera_.Send("await preview");
    Wait(100);
    x_.Key(XK_space);
    AwaitPhotos(1);
    EndWell();
}

TEST_F(WindowTest, AKeyHeldWhenTheFocusGoesIsLetGo) {
    Focus(window_);
    x_.HoldKey(XK_space, true);
    AwaitPhotos(1);
    Focus(0);
    x_.HoldKey(XK_space, false);
    Focus(window_);
    x_.Key(XK_space);
    AwaitPhotos(2);
    EndWell();
}

TEST_F(WindowTest, AButtonHeldWhenTheFocusGoesOrTheWindowIsMinimisedIsLetGo) {
    x_.MoveTo(kShutterButton.x, kShutterButton.y);
    for (const bool isMinimised : {false, true}) {
        Focus(window_);
        x_.Press();
        if (isMinimised) x_.SetMinimised(window_, true);
        Focus(0);
        x_.SetMinimised(window_, false);
        Focus(window_);
        x_.Release();
        Wait(1000);
        camera_.Send("expect photos 0");
    }
    Click(kShutterButton.x, kShutterButton.y);
    AwaitPhotos(1);
    EndWell();
}

class KioskTest : public WindowTest {
  protected:
    KioskTest() : WindowTest("disabled:", {"--fullscreen"}) {}
};

// No window manager runs on the private server.
TEST_F(KioskTest, FullscreenFillsTheScreenWithoutAWindowManager) {
    Click(kShutterButton.x * 2, 120 + kShutterButton.y * 2);
    AwaitPhotos(1);
    EXPECT_EQ(x_.PixelAt(800, 60), 0u) << "the bar above the picture";
    EndWell();
}

struct SessionBus {
    FakeScreenSaver screenSaver;
};

class DesktopTest : protected SessionBus, public WindowTest {
  protected:
    DesktopTest() : WindowTest(screenSaver.address) {}
};

TEST_F(DesktopTest, TheScreenIsKeptOnOnlyWhileTheCameraPreviews) {
    Wait(1000);
    EXPECT_EQ(screenSaver.inhibited, 1);
    camera_.Send("key camera");
    AwaitPhotos(1);
    Wait(1000);
    EXPECT_EQ(screenSaver.calls, 1) << "the pause of a photograph is not worth a call";
    x_.SetMinimised(window_, true);
    Wait(1000);
    EXPECT_EQ(screenSaver.inhibited, 0);
    x_.SetMinimised(window_, false);
    Wait(1500);
    EXPECT_EQ(screenSaver.inhibited, 1);
    EndWell();
}

}  // namespace
}  // namespace Kivo
