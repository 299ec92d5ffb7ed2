#include "backends/v4l2/video_files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "tests/support/temporary_folder.h"

namespace Osp::Media {
namespace {

namespace fs = std::filesystem;
using Testing::TemporaryFolder;
using Testing::WriteText;
using Texts = std::vector<std::string>;

TEST(VideoFiles, ADeviceIsNamedByTheMostLastingOfItsNames) {
    const TemporaryFolder folder;
    const std::string device = folder / "video0";
    WriteText(device, "");
    WriteText(folder / "video1", "");
    const fs::path links = folder / "v4l";
    const auto name = [&] { return StableName(device, "usb-1", links); };
    EXPECT_EQ(StableName(device, "", links), device);
    EXPECT_EQ(name(), "usb-1");
    fs::create_directories(links / "by-path");
    fs::create_directories(links / "by-id");
    fs::create_symlink("../../video0", links / "by-path/port-3");
    fs::create_symlink("../../video1", links / "by-id/another");
    fs::create_symlink("../../video9", links / "by-id/gone");
    EXPECT_EQ(name(), links / "by-path/port-3");
    fs::create_symlink("../../video0", links / "by-id/webcam");
    EXPECT_EQ(name(), links / "by-id/webcam");

    EXPECT_TRUE(LeadsTo(links / "by-path/port-3", device));
    EXPECT_TRUE(LeadsTo(folder / "v4l/../video0", device));
    EXPECT_FALSE(LeadsTo(links / "by-id/gone", device));
    EXPECT_FALSE(LeadsTo("video0", device));
    EXPECT_FALSE(LeadsTo("", device));
}

TEST(VideoFiles, UsersAreTheOtherProgramsThatHaveItOpen) {
    const TemporaryFolder processes;
    const auto add = [&processes](const std::string& id, const char* name, const char* file) {
        fs::create_directories(processes / (id + "/fd"));
        WriteText(processes / (id + "/comm"), name);
        fs::create_symlink("/dev/null", processes / (id + "/fd/0"));
        fs::create_symlink(file, processes / (id + "/fd/3"));
    };
    add("12", "viewer\n", "/dev/video2");
    add("13", "viewer\n", "/dev/video2");
    add("14", "recorder\n", "/dev/video20");
    add("15", "", "/dev/video2");
    add(std::to_string(getpid()), "self\n", "/dev/video2");
    fs::create_directories(processes / "16");  // which has just ended
    EXPECT_EQ(UsersOf("/dev/video2", processes.Path()), (Texts{"viewer", "process 15"}));
    EXPECT_EQ(UsersOf("/dev/video3", processes.Path()), Texts());
}

TEST(VideoFiles, ProblemsSayWhatHelps) {
    const TemporaryFolder folder;
    const fs::path devices = folder.Path();
    fs::permissions(devices, fs::perms(0755));
    ASSERT_EQ(ProblemsWithFiles(devices).size(), 1u);
    EXPECT_NE(ProblemsWithFiles(devices)[0].find("knows no camera"), std::string::npos);
    WriteText(folder / "video0", "");
    EXPECT_EQ(ProblemsWithFiles(devices), Texts());

    // The superuser may do everything; for a moment we are somebody who may not.
    constexpr uid_t kNobody = 65534;
    const uid_t user = geteuid();
    fs::permissions(folder / "video0", fs::perms(user == 0 ? 0660 : 0040));
    if (user == 0) {
        ASSERT_EQ(setegid(kNobody), 0);
        ASSERT_EQ(seteuid(kNobody), 0);
    }
    const Texts problems = ProblemsWithFiles(devices);
    if (user == 0) {
        ASSERT_EQ(seteuid(user), 0);
        ASSERT_EQ(setegid(0), 0);
    }
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_NE(problems[0].find("no permission for " + folder / "video0"), std::string::npos);
    EXPECT_NE(problems[0].find("usermod -aG "), std::string::npos) << problems[0];
}

}  // namespace
}  // namespace Osp::Media
