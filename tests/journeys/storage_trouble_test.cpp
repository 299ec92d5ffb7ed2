// Photographs that cannot be stored, and what is left then. What breaks more than a folder does so
// in a process of its own, and before the others: a forked process must not miss threads of its
// parent's, and the tests of a "death test" run first.
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <utility>

#include "app/model/action_ids.h"
#include "osp/base/trace.h"
#include "osp/media/picture/exif.h"
#include "tests/support/camera_screen.h"
#include "tests/support/faults.h"
#include "tests/support/phone.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

namespace fs = std::filesystem;
using Osp::Testing::InOwnProcess;
using Osp::Testing::LimitSpace;
using Osp::Testing::ReadText;
using Osp::Testing::ReadTree;
using Osp::Testing::TemporaryFolder;
using Osp::Testing::WriteText;
using namespace Testing;

void ExpectWarning(Phone& phone) {
    phone.Do({"await text WARNING", "expect text writing", Tap(kMessageButton), "wait 1000"});
    EXPECT_TRUE(phone.IsEnabled(kActionCapture)) << "the camera goes on";
}

TEST(StorageDeathTest, AFullDiskKeepsOlderPhotographsAndSaysSo) {
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

TEST(StorageDeathTest, AReadOnlyFolderIsToldAndLeftAlone) {
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

TEST(StorageTrouble, DamagedSettingsAreSetAsideAndTold) {
    TemporaryFolder folder;
    fs::create_directories(folder / "kivo-camera");
    WriteText(folder / "kivo-camera/registry.ini", "\x01\x02 no settings at all \xff");
    Phone phone({.dataFolder = folder.Path()});
    phone.Do({"await text damaged", Tap(kMessageButton), "await preview", "key camera",
              "await photos 1"});
}

/// Paths and descriptions in the database itself, past everything that the program might add.
std::map<std::string, std::string> PhotoListOnDisk(const std::string& dataFolder) {
    std::map<std::string, std::string> rows;
    sqlite3* database = nullptr;
    const std::string file = dataFolder + "/kivo-camera/contents.db";
    EXPECT_EQ(sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
    const auto add = [](void* to, int, char** columns, char**) {
        (*static_cast<decltype(rows)*>(to))[columns[0]] = columns[1];
        return 0;
    };
    EXPECT_EQ(sqlite3_exec(database, "SELECT path, description FROM contents", add, &rows, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
    return rows;
}

TEST(StorageTrouble, ADamagedPhotoListIsBuiltAnewFromThePhotographs) {
    TemporaryFolder folder;
    fs::create_directory(folder / "Storagecard");
    {
        Phone phone({.dataFolder = folder.Path()});
        phone.Do({"await preview", "key camera", "await photos 1", "key camera", "await photos 2"});
    }
    fs::rename(folder / "Media/Images/KIVO0001.jpg",
               folder / "Storagecard/Media/Images/KIVO0001.jpg");
    WriteText(folder / "kivo-camera/contents.db", std::string(9000, 'x'));
    Phone phone({.dataFolder = folder.Path()});
    phone.Do("await preview");
    const std::map<std::string, std::string> all = {
        {"/Media/Images/KIVO0000.jpg", "KIVO (Normal),1X"},
        {"/Storagecard/Media/Images/KIVO0001.jpg", "KIVO (Normal),1X"}};
    EXPECT_EQ(PhotoListOnDisk(folder.Path()), all);
    fs::copy(folder / "Media/Images/KIVO0000.jpg", folder / "Media/Images/KIVO0007.jpg");
    EXPECT_EQ(phone.PhotoList().size(), 3u);
    EXPECT_EQ(PhotoListOnDisk(folder.Path()), all) << "a report only reads";
}

TEST(StorageTrouble, SettingsOfANewerVersionAreLeftAloneAndPhotographsAreStored) {
    TemporaryFolder folder;
    const std::string newer = "[Registry]\nVersion=2\n";
    fs::create_directories(folder / "kivo-camera");
    WriteText(folder / "kivo-camera/registry.ini", newer);
    Phone phone({.dataFolder = folder.Path()});
    phone.Do({"await preview", "key camera", "await photos 1", Tap(kSwapButton)});
    EXPECT_EQ(phone.End(), 0);
    EXPECT_EQ(ReadText(folder / "kivo-camera/registry.ini"), newer);
}

/// Does something of its own when the loop's thread comes to a mark.
class AtMark : public Osp::Base::Trace {
  public:
    AtMark(std::string_view mark, std::function<void()> action)
        : mark_(mark), action_(std::move(action)) {}
    void OnMark(const char* stage) override {
        if (stage == mark_) action_();
    }

  private:
    std::string_view mark_;
    std::function<void()> action_;
    Installed installed_{*this};
};

TEST(StorageTrouble, ANumberThatSomebodyElseWasQuickerToTakeIsLeftToHim) {
    Phone phone;
    const std::string images = phone.DataFolder() + "/Media/Images/";
    phone.Do({"await preview", "key camera", "await photos 1"});
    std::unique_ptr<AtMark> rival;
    const auto store = [&] { WriteText(images + "KIVO0001.jpg", "a rival's"); };
    phone.On([&] { rival = std::make_unique<AtMark>("encode-done", store); });
    phone.Do({"wait 500", "key camera", "await photos 3"});
    phone.On([&] { rival = nullptr; });
    EXPECT_EQ(ReadText(images + "KIVO0001.jpg"), "a rival's");
    EXPECT_TRUE(IsWholeJpeg(images + "KIVO0002.jpg"));
    EXPECT_EQ(phone.Photos().size(), 3u) << "and nothing beside them";
    EXPECT_EQ(
        PhotoListOnDisk(phone.DataFolder()),
        (std::map<std::string, std::string>{{"/Media/Images/KIVO0000.jpg", "KIVO (Normal),1X"},
                                            {"/Media/Images/KIVO0002.jpg", "KIVO (Normal),1X"}}));
    const auto exif = Osp::Media::ReadExif(images + "KIVO0002.jpg");
    ASSERT_TRUE(exif);
    EXPECT_EQ(exif->description, "KIVO (Normal),1X");
}

TEST(StorageTrouble, PastTheLastNumberTheOlderPhotographIsKeptBesideTheNewOne) {
    TemporaryFolder folder;
    const std::string images = folder / "Media/Images/";
    fs::create_directories(images);
    WriteText(images + "KIVO9999.jpg", "last");
    WriteText(images + "KIVO10000.jpg", "older");
    Phone phone({.dataFolder = folder.Path()});
    phone.Do({"await preview", "key camera", "wait 1500"});
    EXPECT_EQ(ReadText(images + "old-1-KIVO10000.jpg"), "older");
    EXPECT_TRUE(IsWholeJpeg(images + "KIVO10000.jpg"));
    EXPECT_EQ(ReadTree(images).size(), 3u);
}

TEST(MemoryCard, TakesThePhotographsWhileItIsThere) {
    TemporaryFolder folder;
    fs::create_directories(folder / "Storagecard");
    Phone phone({.registry = {{"EXT_MEMORY", 1}}, .dataFolder = folder.Path()});
    phone.Do({"await preview", "key camera", "await photos 1"});
    EXPECT_TRUE(IsWholeJpeg(folder / "Storagecard/Media/Images/KIVO0000.jpg"));
    EXPECT_EQ(phone.PhotoList()[0]["path"], "/Storagecard/Media/Images/KIVO0000.jpg");
    fs::rename(folder / "Storagecard", folder / "pulled");
    phone.Do({"wait 300", "key camera", "await photos 1"});
    EXPECT_EQ(phone.Photos().size(), 1u) << "in the phone's own memory";
    fs::rename(folder / "pulled", folder / "Storagecard");
    phone.Do({"wait 300", "key camera", "await photos 3"});
    EXPECT_TRUE(IsWholeJpeg(folder / "Storagecard/Media/Images/KIVO0001.jpg"));
}

TEST(MemoryCard, ThatIsMissingAtTheStartIsForgotten) {
    Phone phone({.registry = {{"EXT_MEMORY", 1}}});
    phone.Do({"await preview", "key camera", "await photos 1"});
    EXPECT_EQ(phone.Photos().size(), 1u);
}

}  // namespace
}  // namespace Kivo
