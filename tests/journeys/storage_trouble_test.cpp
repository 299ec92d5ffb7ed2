// Photographs that cannot be stored, and what is left then. Every test has a process of its own: it
// breaks things there, and a forked process must not miss threads of its parent's.
#include <filesystem>
#include <gtest/gtest.h>

#include "support/faults.h"
#include "support/jpeg.h"
#include "support/phone.h"
#include "support/temporary_folder.h"

namespace Kivo {
namespace {

namespace fs = std::filesystem;
using Osp::Testing::InOwnProcess;
using Osp::Testing::LimitSpace;
using Osp::Testing::ReadTree;
using Osp::Testing::TemporaryFolder;
using Osp::Testing::WriteText;
using namespace Testing;

constexpr int kShutter = 1000;

void ExpectWarning(Phone& phone) {
    phone.Do({"await text WARNING", "expect text writing", "tap 400 320", "wait 1000"});
    EXPECT_TRUE(phone.IsEnabled(kShutter)) << "the camera goes on";
}

TEST(StorageTrouble, AFullDiskKeepsOlderPhotographsAndSaysSo) {
    InOwnProcess([] {
        TemporaryFolder folder;
        fs::create_directories(folder / "Media/Images");
        LimitSpace(folder / "Media/Images", 1 << 20);
        Phone phone({.dataFolder = folder.Path()});
        phone.Do({"await preview", "key camera", "await photos 1"});
        int stored = 1;
        for (; stored < 20; ++stored) {
            phone.Do({"wait 500", "key camera", "wait 1500"});
            if (!phone.Try("expect text WARNING")) break;
        }
        const auto before = ReadTree(folder / "Media/Images");
        EXPECT_EQ(before.size(), static_cast<std::size_t>(stored)) << "nothing half-written";
        for (const std::string& photo : phone.Photos()) EXPECT_TRUE(IsWholeJpeg(photo)) << photo;
        ExpectWarning(phone);
        fs::remove(folder / "Media/Images/KIVO0000.jpg");
        phone.Do({"key camera", "wait 1500"});
        EXPECT_EQ(phone.Photos().size(), static_cast<std::size_t>(stored)) << "room again";
    });
}

TEST(StorageTrouble, AReadOnlyFolderIsToldAndLeftAlone) {
    InOwnProcess([] {
        TemporaryFolder folder;
        fs::permissions(folder.Path(), fs::perms::all);
        Osp::Testing::ObeyFileModes();
        fs::create_directories(folder / "Media/Images");
        fs::permissions(folder / "Media/Images", fs::perms::owner_read | fs::perms::owner_exec);
        {
            Phone phone({.dataFolder = folder.Path()});
            phone.Do({"await preview", "key camera"});
            ExpectWarning(phone);
            EXPECT_TRUE(phone.Photos().empty());
        }
        fs::permissions(folder / "Media/Images", fs::perms::owner_all);
        fs::remove_all(folder / "Media");
        fs::remove_all(folder / "kivo-camera");
    });
}

TEST(StorageTrouble, AVanishedFolderIsTold) {
    InOwnProcess([] {
        Phone phone;
        phone.Do("await preview");
        fs::remove_all(phone.DataFolder() + "/Media");
        phone.Do("key camera");
        ExpectWarning(phone);
        fs::create_directories(phone.DataFolder() + "/Media/Images");
        phone.Do({"key camera", "await photos 1"});
    });
}

TEST(StorageTrouble, DamagedSettingsAreSetAsideAndTold) {
    InOwnProcess([] {
        TemporaryFolder folder;
        fs::create_directories(folder / "kivo-camera");
        WriteText(folder / "kivo-camera/registry.ini", "\x01\x02 no settings at all \xff");
        Phone phone({.dataFolder = folder.Path()});
        phone.Do(
            {"await text damaged", "tap 400 320", "await preview", "key camera", "await photos 1"});
    });
}

TEST(StorageTrouble, ADamagedPhotoListIsBuiltAnewFromThePhotographs) {
    InOwnProcess([] {
        TemporaryFolder folder;
        {
            Phone phone({.dataFolder = folder.Path()});
            phone.Do({"await preview", "key camera", "await photos 1"});
        }
        for (const auto& entry : fs::directory_iterator(folder / "kivo-camera")) {
            if (entry.path().extension() == ".db") WriteText(entry.path(), std::string(9000, 'x'));
        }
        Phone phone({.dataFolder = folder.Path()});
        phone.Do("await preview");
        const auto list = phone.PhotoList();
        ASSERT_EQ(list.size(), 1u);
        EXPECT_EQ(list[0]["description"], "KIVO (Normal),1X");
        phone.Do({"key camera", "await photos 2"});
    });
}

TEST(MemoryCard, TakesThePhotographsUntilItIsPulled) {
    InOwnProcess([] {
        TemporaryFolder folder;
        fs::create_directories(folder / "Storagecard");
        Phone phone({.registry = {{"EXT_MEMORY", 1}}, .dataFolder = folder.Path()});
        phone.Do({"await preview", "key camera", "await photos 1"});
        EXPECT_TRUE(IsWholeJpeg(folder / "Storagecard/Media/Images/KIVO0000.jpg"));
        EXPECT_EQ(phone.PhotoList()[0]["path"], "/Storagecard/Media/Images/KIVO0000.jpg");
        fs::rename(folder / "Storagecard", folder / "pulled");
        phone.Do({"wait 300", "key camera"});
        ExpectWarning(phone);
        fs::rename(folder / "pulled", folder / "Storagecard");
        phone.Do({"key camera", "await photos 2"});
        EXPECT_TRUE(phone.Photos().empty()) << "none in the phone's own memory";
    });
}

TEST(MemoryCard, ThatIsMissingAtTheStartIsForgotten) {
    InOwnProcess([] {
        Phone phone({.registry = {{"EXT_MEMORY", 1}}});
        phone.Do({"await preview", "key camera", "await photos 1"});
        EXPECT_EQ(phone.Photos().size(), 1u);
    });
}

}  // namespace
}  // namespace Kivo
