#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>
#include <vector>

#include <osp/io/directory.h>
#include <osp/io/file.h>

#include "osp/base/owner.h"
#include "osp/io/removable_medium.h"
#include "osp/io/storage_map.h"
#include "tests/support/faults.h"
#include "tests/support/product.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Io {
namespace {

namespace fs = std::filesystem;
using Testing::WriteText;

class StorageTest : public testing::Test {
  protected:
    StorageTest() {
        fs::create_directory(folder_ / "res");
        WriteText(folder_ / "res/icon.png", "icon");
        EXPECT_EQ(storage_.Prepare(), result::kSuccess);
    }

    std::string Real(const char* path, Access access = Access::kRead) {
        std::string real;
        return Succeeded(storage_.Resolve(path, access, real)) ? real : "";
    }
    result Failure(const Base::String& path, Access access = Access::kRead) {
        std::string real = "untouched";
        const result r = storage_.Resolve(path, access, real);
        EXPECT_EQ(real, "untouched");
        return r;
    }

    Testing::TemporaryFolder folder_;
    std::string data_ = folder_ / "data";
    StorageMap storage_{Testing::StorageIn(data_, folder_ / "res")};
    Service<StorageMap>::Installed installed_{storage_};
};

TEST_F(StorageTest, KnowsItsFoldersAndNothingOutside) {
    EXPECT_EQ(Real("/Res/icon.png"), folder_ / "res/icon.png");
    EXPECT_EQ(Real("/Media/Images"), data_ + "/Media/Images");
    EXPECT_EQ(Real("//Media/./Images//KIVO0000.jpg", Access::kWrite),
              data_ + "/Media/Images/KIVO0000.jpg");
    EXPECT_EQ(Failure("/Res/new.png", Access::kWrite), result::kPermissionDenied);
    for (const char* path : {"", "Res/icon.png", "/Res/../secret", "/..", "/Media/Images/.."}) {
        EXPECT_EQ(Failure(path), result::kInvalidArgument) << path;
    }
    EXPECT_EQ(Failure(Base::String(std::u16string(u"/Res/a\0b", 8))), result::kInvalidArgument);
    for (const char* path : {"/", "/Media", "/Resource", "/Media/ImagesToo/a", "/etc/passwd"}) {
        EXPECT_EQ(Failure(path), result::kFileNotFound) << path;
    }
}

TEST_F(StorageTest, PreparingCleansUpKeepsOthersOutAndReportsWhatItCannotCreate) {
    const std::string images = data_ + "/Media/Images";
    WriteText(images + "/.osp-1-1.tmp", "stale");
    WriteText(storage_.GetPrivateFolder() + "/.osp-1-1.tmp", "stale");
    EXPECT_EQ(Testing::ModeOf(storage_.GetPrivateFolder()), 0700u);
    fs::permissions(storage_.GetPrivateFolder(), fs::perms(0755));
    EXPECT_EQ(storage_.Prepare(), result::kSuccess);
    EXPECT_EQ(Testing::ModeOf(storage_.GetPrivateFolder()), 0700u);
    EXPECT_TRUE(Testing::ReadTree(data_).empty());
    fs::remove(images);
    WriteText(images, "a file in the way");
    EXPECT_NE(storage_.Prepare(), result::kSuccess);
}

TEST_F(StorageTest, IsLockedForOthersUntilItsProcessEnds) {
    const auto lockElsewhere = [this] { return StorageMap(Testing::StorageIn(data_)).Lock(); };
    Testing::KilledAfter(std::chrono::milliseconds(100), [&](int) {
        EXPECT_EQ(storage_.Lock(), result::kSuccess);
        pause();
    });
    auto own = std::make_unique<StorageMap>(Testing::StorageIn(data_));
    EXPECT_EQ(own->Lock(), result::kSuccess) << "a killed process has let go";
    Testing::InOwnProcess([&] { EXPECT_EQ(lockElsewhere(), result::kDeviceBusy); });
    // A program that it started and that outlives it.
    const Base::Owner<FILE, pclose> started(popen("cat", "w"));
    own = nullptr;
    // What it does not inherit it closes a moment after popen has returned.
    for (int i = 0; i < 200 && lockElsewhere() != result::kSuccess; ++i) usleep(10000);
    EXPECT_EQ(lockElsewhere(), result::kSuccess);
    fs::remove_all(storage_.GetPrivateFolder());
    EXPECT_EQ(lockElsewhere(), result::kSuccess) << "what is not there holds nobody up";
}

TEST_F(StorageTest, TheCardComesAndGoes) {
    EXPECT_FALSE(Directory::Exists("/Storagecard/Media/Images"));
    fs::create_directory(data_ + "/Storagecard");
    EXPECT_TRUE(Directory::Exists("/Storagecard/Media/Images"));
    EXPECT_EQ(Real("/Storagecard/a"), data_ + "/Storagecard/a");
    // A folder that vanishes from a card that stays is not silently made again.
    fs::remove_all(data_ + "/Storagecard/Media");
    EXPECT_FALSE(Directory::Exists("/Storagecard/Media/Images"));
    fs::remove_all(data_ + "/Storagecard");
    EXPECT_FALSE(Directory::Exists("/Storagecard"));
    fs::create_directory(data_ + "/Storagecard");
    EXPECT_TRUE(Directory::Exists("/Storagecard/Media/Images"));
}

TEST(StorageMap, LiesInTheDesktopsFoldersByDefault) {
    const Testing::TemporaryFolder home;
    Testing::InOwnProcess([&] {
        setenv("HOME", home.Path().c_str(), 1);
        setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);
        setenv("XDG_DATA_HOME", (home / "share").c_str(), 1);
        fs::create_directory(home / "config");
        WriteText(home / "config/user-dirs.dirs", "XDG_PICTURES_DIR=\"$HOME/Bilder\"\n");
        StorageMap storage(Testing::StorageIn(""));
        EXPECT_EQ(storage.Prepare(), result::kSuccess);
        EXPECT_TRUE(fs::is_directory(home / "Bilder/Shots"));
        EXPECT_EQ(storage.GetPrivateFolder(), home / "share/test-camera");
        EXPECT_TRUE(fs::is_directory(storage.GetPrivateFolder()));
    });
}

TEST(RemovableDevice, IsToldByWhatTheSystemSaysOfItsDisk) {
    const Testing::TemporaryFolder sys;
    fs::create_directories(sys / "dev/block");
    const struct {
        const char *disk, *removable, *type;
        bool isRemovable;
    } cases[] = {{"pci/ata1/sda", "0\n", nullptr, false},
                 {"pci/usb1/sdb", "0\n", nullptr, true},
                 {"pci/reader/sdc", "1\n", nullptr, true},
                 {"mmc_host/mmcblk0", "0\n", "SD\n", true},
                 {"mmc_host/mmcblk1", "0\n", "MMC\n", false}};
    for (unsigned i = 0; i < std::size(cases); ++i) {
        const std::string disk = std::string("devices/") + cases[i].disk;
        fs::create_directories(sys / (disk + "/part"));
        fs::create_directories(sys / (disk + "/device"));
        WriteText(sys / (disk + "/removable"), cases[i].removable);
        WriteText(sys / (disk + "/part/partition"), "1\n");
        if (cases[i].type != nullptr) WriteText(sys / (disk + "/device/type"), cases[i].type);
        const std::string link = sys / ("dev/block/8:" + std::to_string(i));
        fs::create_directory_symlink("../../" + disk, link);
        fs::create_directory_symlink("../../" + disk + "/part", link + "1");
        for (const unsigned number : {i, 10 * i + 1}) {
            EXPECT_EQ(IsRemovableDevice(sys.Path(), makedev(8, number)), cases[i].isRemovable)
                << number << " of " << disk;
        }
    }
    EXPECT_FALSE(IsRemovableDevice(sys.Path(), makedev(8, 9)));
}

TEST_F(StorageTest, OpensRegularFilesOnlyAndNeverWaits) {
    ASSERT_EQ(mkfifo((data_ + "/Media/Images/KIVO0001.jpg").c_str(), 0600), 0);
    for (const char* path : {"/Media/Images/KIVO0001.jpg", "/Media/Images", "/Media/Images/no"}) {
        File file;
        EXPECT_EQ(file.Construct(path, "r"), result::kFileNotFound) << path;
    }
    FileAttributes attributes;
    ASSERT_EQ(File::GetAttributes("/Res/icon.png", attributes), result::kSuccess);
    EXPECT_EQ(File::GetAttributes("/Media/Images/no", attributes), result::kFileNotFound);
    EXPECT_EQ(attributes.GetFileSize(), 4);
    EXPECT_GT(attributes.GetLastModifiedMs(), 1'700'000'000'000);
}

TEST_F(StorageTest, ListsAFolderInTheOrderOfNames) {
    for (const char* name : {"KIVO0002.jpg", "KIVO0001.jpg", ".hidden", "a\xFF"}) {
        WriteText(data_ + "/Media/Images/" + name, "");
    }
    Directory directory;
    ASSERT_EQ(directory.Construct("/Media/Images"), result::kSuccess);
    const std::unique_ptr<DirEnumerator> entries(directory.ReadN());
    ASSERT_NE(entries, nullptr);
    EXPECT_TRUE(entries->GetCurrentDirEntry().GetName().IsEmpty());
    std::vector<std::string> names;
    while (Succeeded(entries->MoveNext())) {
        names.push_back(entries->GetCurrentDirEntry().GetName().ToUtf8());
    }
    EXPECT_EQ(names, (std::vector<std::string>{".hidden", "KIVO0001.jpg", "KIVO0002.jpg",
                                               "a\xEF\xBF\xBD"}));
    EXPECT_EQ(entries->MoveNext(), result::kEndOfFile);
}

TEST_F(StorageTest, AFolderThatCannotBeListedSaysWhy) {
    Directory directory;
    EXPECT_EQ(directory.ReadN(), nullptr);
    EXPECT_EQ(directory.GetLastResult(), result::kInvalidState);
    EXPECT_EQ(directory.Construct("/Res/icon.png"), result::kFileNotFound);
    ASSERT_EQ(directory.Construct("/Media/Images"), result::kSuccess);
    fs::permissions(folder_.Path(), fs::perms(0755));
    fs::permissions(data_ + "/Media/Images", fs::perms::none);
    Testing::InOwnProcess([&] {
        Testing::ObeyFileModes();
        EXPECT_EQ(directory.ReadN(), nullptr);
        EXPECT_EQ(directory.GetLastResult(), result::kPermissionDenied);
    });
    fs::remove(data_ + "/Media/Images");
    EXPECT_EQ(directory.ReadN(), nullptr);
    EXPECT_EQ(directory.GetLastResult(), result::kFileNotFound);
}

}  // namespace
}  // namespace Osp::Io
