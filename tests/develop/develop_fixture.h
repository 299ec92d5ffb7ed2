// kivo-develop as a process of its own, files to feed it with, and a folder for them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

#include "tests/support/pictures/jpeg.h"
#include "tests/support/programs/program.h"
#include "tests/support/temporary_folder.h"

namespace Kivo::Testing {

/// Runs it to its end.
ProgramResult RunDevelop(const std::vector<std::string>& arguments);

/// The text of a binary pixmap, and back; the test fails when it is not a whole one.
std::string ToPpm(const Picture& picture);
Picture FromPpm(const std::string& text);

inline std::span<const std::uint8_t> BytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

class DevelopTest : public testing::Test {
  protected:
    std::string Write(const std::string& name, const std::string& content) {
        Osp::Testing::WriteText(folder_ / name, content);
        return folder_ / name;
    }
    std::string Read(const std::string& name) { return Osp::Testing::ReadText(folder_ / name); }
    std::string At(const std::string& name) { return folder_ / name; }

    /// Expects success, silence and nothing beside the output.
    void Develop(const std::vector<std::string>& arguments) {
        const ProgramResult result = RunDevelop(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.output + result.errors, "");
    }

    /// Expects one line on standard error with `part`, and that no file came or changed.
    void ExpectRefusal(const std::vector<std::string>& arguments, int exitCode,
                       const std::string& part) {
        const auto before = Osp::Testing::ReadTree(folder_.Path());
        const ProgramResult result = RunDevelop(arguments);
        EXPECT_EQ(result.exitCode, exitCode) << result.errors;
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
        EXPECT_EQ(result.errors.find("kivo-develop: "), 0U) << result.errors;
        EXPECT_NE(result.errors.find(part), std::string::npos) << result.errors;
        EXPECT_TRUE(Osp::Testing::ReadTree(folder_.Path()) == before) << "files changed";
    }

    Osp::Testing::TemporaryFolder folder_;
};

}  // namespace Kivo::Testing
