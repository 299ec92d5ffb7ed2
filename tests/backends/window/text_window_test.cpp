// Text that is written in a real window, with real X keys.
#include <X11/keysym.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/programs/program.h"
#include "tests/support/programs/x_server.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

using nlohmann::json;
using namespace Testing;

class TextWindowTest : public testing::Test {
  protected:
    TextWindowTest()
        : program_({"--script", "-", "--data", folder_.Path(), "--primary", "scene", "--secondary",
                    "scene"},
                   {{"DISPLAY", x_.Name()},
                    {"GDK_BACKEND", "x11"},
                    {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
                    {"GTK_A11Y", "none"},
                    {"LC_ALL", "C.UTF-8"},
                    // Toolkit and display driver keep things to the end, and leave no name behind.
                    {"ASAN_OPTIONS", "detect_leaks=0"}},
                   "../text-entry/bin/kivo-camera") {
        program_.Send("await form MessageForm");
        x_.AddKey(XK_dead_acute);
        const unsigned long window = x_.FindWindow("KIVO Camera");
        EXPECT_NE(window, 0u);
        Screen(500);  // a window takes input once it has been laid out
        x_.Focus(window);
        Screen(500);
    }

    /// After a while of real time.
    json Screen(int waitMs = 300) {
        program_.Send("wait " + std::to_string(waitMs));
        program_.Send("print screen");
        return json::parse(program_.ReadLine());
    }
    json Find(const std::string& kind) {
        const json screen = Screen();
        for (const json& control : screen["controls"]) {
            if (control["kind"] == kind) return control;
        }
        return json::object();
    }
    std::string Text() { return Find("edit").value("text", "nothing is there"); }
    bool HasKeyboard() {
        const json screen = Screen();
        for (const json& control : screen["controls"]) {
            if (control["text"] == "Keyboard") return true;
        }
        return false;
    }
    void WithControl(unsigned long key) {
        x_.HoldKey(XK_Control_L, true);
        x_.Key(key);
        x_.HoldKey(XK_Control_L, false);
    }
    void Keys(std::initializer_list<unsigned long> keys) {
        for (const unsigned long key : keys) x_.Key(key);
    }

    Osp::Testing::TemporaryFolder folder_;
    XServer x_;
    CameraProgram program_;
};

TEST_F(TextWindowTest, KeysComposeEditAndPaste) {
    EXPECT_TRUE(HasKeyboard());
    Keys({XK_c, XK_a, XK_f, XK_dead_acute});
    EXPECT_EQ(Text(), "caf") << "half of a letter is none";
    Keys({XK_e, XK_space, XK_x, XK_BackSpace});
    EXPECT_EQ(Text(), "caf\u00e9 ");
    EXPECT_FALSE(HasKeyboard()) << "the real one is in use";

    WithControl(XK_a);
    WithControl(XK_c);
    Keys({XK_End, XK_Return});
    WithControl(XK_v);
    EXPECT_EQ(Text(), "caf\u00e9 \ncaf\u00e9 ");
    Keys({XK_Home, XK_Delete});
    WithControl(XK_a);
    WithControl(XK_x);
    EXPECT_EQ(Text(), "");
    WithControl(XK_v);
    EXPECT_EQ(Text(), "caf\u00e9 \naf\u00e9 ");

    Keys({XK_Tab, XK_Return});
    EXPECT_EQ(Find("popup"), json::object()) << "with the ring on it, the button is pressed";
    Keys({XK_q});
    EXPECT_EQ(Screen()["form"], "MessageForm");
    program_.Send("quit");
    const ProgramResult result = program_.Finish();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
}

}  // namespace
}  // namespace Kivo
