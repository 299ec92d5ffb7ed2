// From the shutter to the file.
#include <gtest/gtest.h>
#include <memory>

#include "app/model/action_ids.h"
#include "osp/media/picture/exif.h"
#include "tests/support/camera_screen.h"
#include "tests/support/phone.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

using Osp::Testing::ReadTree;
using Osp::Testing::TemporaryFolder;
using Osp::Testing::WriteText;
using namespace Testing;

TEST(Photograph, IsNumberedDescribedAndRegistered) {
    Phone phone;
    phone.Do(
        {"await preview", "key camera", "await photos 1", Tap(kShutterButton), "await photos 2"});
    const auto list = phone.PhotoList();
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[1]["path"], "/Media/Images/KIVO0001.jpg");
    EXPECT_EQ(list[1]["description"], "KIVO (Normal),1X");
    EXPECT_EQ(list[1]["width"], 1280);
    EXPECT_EQ(list[1]["height"], 960);
    const auto exif = Osp::Media::ReadExif(phone.Photos()[1]);
    ASSERT_TRUE(exif);
    EXPECT_EQ(exif->description, "KIVO (Normal),1X");
}

TEST(Photograph, TakesTheNumberAfterTheHighest) {
    TemporaryFolder folder;
    std::filesystem::create_directories(folder / "Media/Images");
    WriteText(folder / "Media/Images/KIVO0041.jpg", "an older one");
    Phone phone({.dataFolder = folder.Path()});
    phone.Do({"await preview", "key camera", "await photos 2"});
    EXPECT_EQ(phone.Photos().back(), folder / "Media/Images/KIVO0042.jpg");
    EXPECT_EQ(Osp::Testing::ReadText(folder / "Media/Images/KIVO0041.jpg"), "an older one");
}

TEST(Photograph, TheSameScriptLeavesTheSameFilesAndScreens) {
    std::map<std::string, std::string> trees[2];
    for (auto& tree : trees) {
        TemporaryFolder folder;
        {
            Phone phone({.dataFolder = folder.Path()});
            phone.Do({"await preview", "key camera", "await photos 1", "wait 700"});
            phone.Do("screenshot " + (folder / "screen.png"));
            phone.Do({"drag 700 15 640 15", "wait 1000", "key camera", "await photos 2"});
            phone.Do("screenshot " + (folder / "later.png"));
        }
        tree = ReadTree(folder.Path());
    }
    ASSERT_GE(trees[0].size(), 5u) << "two photographs, two screens, the database";
    for (const auto& [name, content] : trees[0]) {
        EXPECT_TRUE(content == trees[1][name]) << name << " differs";
    }
    EXPECT_EQ(trees[0].size(), trees[1].size());
}

TEST(Photograph, IsAbandonedByGoingToTheBackground) {
    Phone phone;
    phone.Do({"await preview", "key camera", "background", "wait 4000"});
    EXPECT_TRUE(phone.Photos().empty());
    phone.Do({"foreground", "await preview", "wait 100"});
    EXPECT_TRUE(phone.IsEnabled(kActionCapture));
    phone.Do({"key camera", "await photos 1"});
}

TEST(Photograph, OfAnUnpluggedCameraIsNone) {
    Phone phone;
    phone.Do({"await preview", "unplug primary", "wait 200", "key camera", "wait 4000"});
    EXPECT_TRUE(phone.Photos().empty());
    phone.Do({"plug primary", "wait 500", "key camera", "await photos 1"});
}

}  // namespace
}  // namespace Kivo
