// The program from its command line.
#include "support/program.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace Kivo {
namespace {

using Osp::Testing::ReadText;
using Osp::Testing::TemporaryFolder;
using Osp::Testing::WriteText;
using namespace Testing;

TEST(Program, SaysWhatIsWrongWithItsArguments) {
    const TemporaryFolder folder;
    const struct {
        std::vector<std::string> arguments;
        int exitCode;
        const char* said;
    } cases[] = {
        {{"--headless", "--script", "-", "--primary", "nonsense"}, 1, "nonsense"},
        {{"--headless", "--script", "-", "--primary", "photos:" + (folder / "missing")},
         1,
         "missing"},
        {{"--headless", "--script", folder / "no-script"}, 1, "no-script"},
        {{"--headless", "--script", "-", "--primary", "none", "--secondary", "none"},
         1,
         "no camera"},
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
