// The script language: what it refuses, and when an await ends.
#include <gtest/gtest.h>

#include "tests/support/camera_screen.h"
#include "tests/support/phone.h"
#include "tests/support/programs/program.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

using Osp::Testing::TemporaryFolder;
using Osp::Testing::WriteText;
using namespace Testing;

constexpr std::size_t kLongestLine = 65536;

TEST(Script, RefusesLinesThatSayMoreOrLessThanTheyShould) {
    Phone phone;
    phone.Do("await preview");
    const struct {
        std::string line;
        const char* reason;
    } cases[] = {
        {"press 1 2 3", "'3' is too much"},
        {"press 1", "a word is missing"},
        {"drag 1 2 3 4 5 6", "'6' is too much"},
        {"drag 1 2 3 4 10001", "10000 steps"},
        {"key camera twice", "'twice' is too much"},
        {"wait 100 ms", "'ms' is too much"},
        {"wait -1", "'-1' is negative"},
        {"wait soon", "'soon' is not a number"},
        {"await photos 0 -5", "'-5' is negative"},
        {"await photos -1", "'-1' is negative"},
        {"await photos 0 1 2", "'1' is too much"},
        {"await preview soon", "'soon' is too much"},
        {"expect preview 100", "'100' is too much"},
        {"expect form MainForm 100", "'100' is too much"},
        {"expect photos", "a word is missing"},
        {"await rain", "no such condition"},
        {"background now", "'now' is too much"},
        {"unplug primary secondary", "'secondary' is too much"},
        {"screenshot a.png b.png", "'b.png' is too much"},
        {"print photos screen", "'screen' is too much"},
        {"quit now", "'now' is too much"},
        {"wait 0 #" + std::string(kLongestLine, '-'), "too long"},
    };
    for (const auto& c : cases) {
        const auto error = phone.Try(c.line);
        ASSERT_TRUE(error) << c.line.substr(0, 80);
        EXPECT_NE(error->find(c.reason), std::string::npos) << c.line << ": " << *error;
    }
    phone.Do({"wait 0 # ms", "drag 0 0 2147483647 0 2", "await text Shutter 0",
              "expect form MainForm", "await form MainForm 5"});
}

TEST(Script, SaysHowItIsWhenItIsNotAsExpected) {
    Phone phone;
    phone.Do({"await preview", "key camera", "await photos 1"});
    EXPECT_EQ(phone.Try("await photos 2 100"), "the number is 1");
    EXPECT_EQ(phone.Try("expect photos 0"), "the number is 1");
    EXPECT_EQ(phone.Try("expect form OptionForm"), "the form is MainForm");
}

TEST(Script, APreviewIsOneThatNothingCovers) {
    Phone phone;
    EXPECT_TRUE(phone.Try("expect preview"));
    phone.Do("await preview");
    const nlohmann::json screen = phone.Screen();
    for (const nlohmann::json& control : screen["controls"]) {
        if (control["kind"] == "overlay") break;
        EXPECT_NE(control["bounds"], nlohmann::json({0, 0, 800, 480})) << control;
    }
    for (const std::string& cover : {Tap(kHelpButton), std::string("background")}) {
        phone.Do({cover, "wait 500"});
        EXPECT_TRUE(phone.Try("expect preview")) << cover;
        phone.Do({Tap(kCloseHelpButton), "foreground", "await preview"});
    }
}

/// What the program says of a script file.
ProgramResult RunFile(const std::string& text) {
    const TemporaryFolder folder;
    WriteText(folder / "script", text);
    return CameraProgram({"--headless", "--data", folder.Path(), "--script", folder / "script"})
        .Finish();
}

TEST(Script, TypesIntoTheEditAreaThatHasTheFocus) {
    EXPECT_EQ(Phone().Try("text hello"), "no edit area has the focus");
    const TemporaryFolder folder;
    CameraProgram program(
        {"--headless", "--data", folder.Path(), "--primary", "scene", "--script", "-"}, {},
        "../text-entry/bin/kivo-camera");
    for (const char* line : {"text h\u00e9llo  you", "expect text h\u00e9llo you", "print screen",
                             "tap 315 260", "text unseen"}) {
        program.Send(line);
    }
    const ProgramResult result = program.Finish();
    EXPECT_NE(result.output.find("\"text\":\"h\u00e9llo you\",\"enabled\":true,\"edited\":true"),
              result.output.npos)
        << result.output;
    EXPECT_NE(result.errors.find("line 5"), result.errors.npos) << result.errors;
}

TEST(Script, LinesAreCountedAndCutOffWhereverTheyComeFrom) {
    const std::string lines = "\xEF\xBB\xBFwait 1\n\nwait 2\r\n";
    const std::string longest = "#" + std::string(kLongestLine - 1, '-');
    EXPECT_EQ(RunFile(lines + longest + "\nwait 3").exitCode, 0);
    for (const std::string& wrong :
         {longest + "-", "wait 4\xEF\xBB\xBF" + longest, std::string("expect photos 1")}) {
        const std::string script = lines + wrong + "\nwait 5\n";
        ProgramResult result = RunFile(script);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_TRUE(result.errors.starts_with("kivo-camera: line 4: " + wrong.substr(0, 20)))
            << result.errors;
        EXPECT_LT(result.errors.size(), 200u);
        const ProgramResult fromInput = RunScript({}, {script.c_str()});
        EXPECT_EQ(fromInput.exitCode, 1);
        EXPECT_EQ(fromInput.errors, result.errors);
    }
}

}  // namespace
}  // namespace Kivo
