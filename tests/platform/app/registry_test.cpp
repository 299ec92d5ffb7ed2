#include <gtest/gtest.h>
#include <random>
#include <string>
#include <sys/stat.h>
#include <vector>

#include <osp/app/app_registry.h>

#include "osp/app/access.h"
#include "osp/app/registry_file.h"
#include "osp/io/safe_file.h"
#include "tests/support/faults.h"
#include "tests/support/temporary_folder.h"

namespace Osp::App {
namespace {

using Base::String;
using Testing::ReadText;
using Testing::ReadTree;
using Testing::TemporaryFolder;
using Testing::WriteText;

class RegistryTest : public testing::Test {
  protected:
    void Fill() {
        RegistryFile file(path_);
        AppRegistry registry = Access::MakeRegistry(file);
        EXPECT_EQ(registry.Add("CAM_TYPE", "2"), result::kSuccess);
        EXPECT_EQ(registry.Add("CAPTURE_WIDTH", 1280), result::kSuccess);
        EXPECT_EQ(registry.Add("TW_TOKEN", " a=b;\n\xC3\xA4\\[x] "), result::kSuccess);
        EXPECT_EQ(registry.Save(), result::kSuccess);
    }

    TemporaryFolder folder_;
    std::string path_ = folder_ / "registry";
};

TEST_F(RegistryTest, AValueIsAddedOnceThenSetThenRemoved) {
    RegistryFile file(path_);
    AppRegistry registry = Access::MakeRegistry(file);
    String text("default");
    int number = 7;
    EXPECT_EQ(registry.Get("CAM_TYPE", text), result::kKeyNotFound);
    EXPECT_EQ(registry.Set("CAM_TYPE", "1"), result::kKeyNotFound);
    EXPECT_EQ(registry.Remove("CAM_TYPE"), result::kKeyNotFound);
    EXPECT_EQ(registry.Add("CAM_TYPE", "1"), result::kSuccess);
    EXPECT_EQ(registry.Add("CAM_TYPE", "2"), result::kKeyAlreadyExists);
    EXPECT_EQ(registry.Get("CAM_TYPE", number), result::kInvalidFormat);
    EXPECT_EQ(registry.Get("CAM_TYPE", text), result::kSuccess);
    EXPECT_EQ(text, String("1"));
    EXPECT_EQ(registry.Set("CAM_TYPE", -3), result::kSuccess);
    EXPECT_EQ(registry.Get("CAM_TYPE", text), result::kInvalidFormat);
    EXPECT_EQ(text, String("1"));
    EXPECT_EQ(number, 7);
    EXPECT_EQ(registry.Get("CAM_TYPE", number), result::kSuccess);
    EXPECT_EQ(number, -3);
    EXPECT_EQ(registry.Remove("CAM_TYPE"), result::kSuccess);
    EXPECT_EQ(registry.Get("CAM_TYPE", number), result::kKeyNotFound);
    for (const char* key : {"", "a b", "a=b", "[a]", "\xC3\xA4"}) {
        EXPECT_EQ(registry.Add(key, 1), result::kInvalidArgument) << key;
    }
    EXPECT_EQ(registry.Add("A", String(std::u16string(u"a\0b", 3))), result::kInvalidArgument);
}

TEST_F(RegistryTest, SavedValuesComeBackForTheOwnerOnly) {
    Fill();
    RegistryFile file(path_);
    AppRegistry registry = Access::MakeRegistry(file);
    EXPECT_FALSE(file.WasDamaged());
    String text;
    int number = 0;
    EXPECT_EQ(registry.Get("TW_TOKEN", text), result::kSuccess);
    EXPECT_EQ(text, String(" a=b;\n\xC3\xA4\\[x] "));
    EXPECT_EQ(registry.Get("CAPTURE_WIDTH", number), result::kSuccess);
    EXPECT_EQ(number, 1280);
    struct stat status;
    ASSERT_EQ(stat(path_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(RegistryTest, OnlyWhatIsUnsavedIsSavedAtTheEnd) {
    RegistryFile file(path_);
    AppRegistry registry = Access::MakeRegistry(file);
    EXPECT_EQ(file.SaveUnsaved(), result::kSuccess);
    EXPECT_TRUE(ReadTree(folder_.Path()).empty());
    Fill();
    RegistryFile laterFile(path_);
    AppRegistry later = Access::MakeRegistry(laterFile);
    const std::string saved = ReadText(path_);
    EXPECT_EQ(later.Set("CAPTURE_WIDTH", 640), result::kSuccess);
    EXPECT_EQ(ReadText(path_), saved);
    EXPECT_EQ(laterFile.SaveUnsaved(), result::kSuccess);
    EXPECT_NE(ReadText(path_), saved);
    // Nothing has changed since, so a file that vanished is not written again.
    std::filesystem::remove(path_);
    EXPECT_EQ(later.Set("CAPTURE_WIDTH", 640), result::kSuccess);
    EXPECT_EQ(laterFile.SaveUnsaved(), result::kSuccess);
    EXPECT_TRUE(ReadTree(folder_.Path()).empty());
}

/// Loads `content`, and checks that it is taken for damaged, kept, and no hindrance.
void ExpectDamaged(const std::string& content) {
    const TemporaryFolder folder;
    const std::string path = folder / "registry";
    WriteText(path, content);
    RegistryFile file(path);
    AppRegistry registry = Access::MakeRegistry(file);
    EXPECT_TRUE(file.WasDamaged()) << content;
    EXPECT_TRUE(file.Values().empty()) << content;
    EXPECT_EQ(ReadText(path + ".damaged-1"), content);
    EXPECT_EQ(registry.Add("CAM_TYPE", "3"), result::kSuccess);
    EXPECT_EQ(registry.Save(), result::kSuccess);
    EXPECT_FALSE(RegistryFile(path).WasDamaged());
}

TEST_F(RegistryTest, AFileCutOffAnywhereIsSetAside) {
    Fill();
    const std::string whole = ReadText(path_);
    for (std::size_t size = 0; size < whole.size(); ++size) ExpectDamaged(whole.substr(0, size));
}

TEST_F(RegistryTest, AFileOfAnotherKindIsSetAside) {
    Fill();
    const std::string whole = ReadText(path_);
    const auto with = [&whole](const std::string& from, const std::string& to) {
        std::string changed = whole;
        return changed.replace(changed.find(from), from.size(), to);
    };
    ExpectDamaged(with("1280", "wide"));
    ExpectDamaged(with("1280", "12800000000"));
    ExpectDamaged(with("Version=1", "Version=0"));
    ExpectDamaged(with("CAM_TYPE=2", "CAM_TYPE=\xFF"));
    ExpectDamaged(with("[Texts]", "[Texts"));
    ExpectDamaged(std::string(4096, '\0'));
    std::minstd_rand random(7);
    std::string noise(1000, ' ');
    for (char& c : noise) c = static_cast<char>(random());
    ExpectDamaged(noise + "\n");
}

TEST_F(RegistryTest, AFolderInItsPlaceIsSetAside) {
    std::filesystem::create_directories(path_ + "/inner");
    RegistryFile file(path_);
    AppRegistry registry = Access::MakeRegistry(file);
    EXPECT_TRUE(file.WasDamaged());
    EXPECT_EQ(registry.Save(), result::kSuccess);
    EXPECT_TRUE(std::filesystem::is_directory(path_ + ".damaged-1/inner"));
}

TEST_F(RegistryTest, WhatIsNoFileIsSetAsideAndNotWaitedFor) {
    ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", folder_ / "endless");
    for (const std::string& path : {path_, folder_ / "endless"}) {
        RegistryFile file(path);
        AppRegistry registry = Access::MakeRegistry(file);
        EXPECT_TRUE(file.WasDamaged()) << path;
        EXPECT_EQ(registry.Save(), result::kSuccess);
        EXPECT_FALSE(std::filesystem::is_regular_file(path + ".damaged-1"));
        EXPECT_TRUE(std::filesystem::exists(path + ".damaged-1"));
    }
}

TEST_F(RegistryTest, OneOfANewerVersionIsLeftAlone) {
    const std::string newer = "[Registry]\nVersion=2\nShape=another\n[Texts]\nCAM_TYPE=2\n";
    WriteText(path_, newer);
    RegistryFile file(path_);
    AppRegistry registry = Access::MakeRegistry(file);
    EXPECT_TRUE(file.IsNewer());
    EXPECT_FALSE(file.WasDamaged());
    EXPECT_TRUE(file.Values().empty());
    EXPECT_EQ(registry.Add("CAM_TYPE", "3"), result::kSuccess);
    EXPECT_EQ(registry.Save(), result::kPermissionDenied);
    EXPECT_EQ(file.SaveUnsaved(), result::kPermissionDenied);
    EXPECT_EQ(ReadTree(folder_.Path()), (std::map<std::string, std::string>{{"registry", newer}}));
}

TEST_F(RegistryTest, AFailedSaveKeepsTheFileAndTheChanges) {
    Fill();
    Testing::InOwnProcess([&] {
        const std::string small = folder_ / "small";
        std::filesystem::create_directory(small);
        Testing::LimitSpace(small, 16 * 1024);
        RegistryFile file(small + "/registry");
        AppRegistry registry = Access::MakeRegistry(file);
        EXPECT_EQ(registry.Add("A", 1), result::kSuccess);
        EXPECT_EQ(registry.Save(), result::kSuccess);
        const std::string saved = ReadText(small + "/registry");
        EXPECT_EQ(registry.Add("B", String(std::string(64 * 1024, 'b'))), result::kSuccess);
        EXPECT_EQ(registry.Save(), result::kStorageFull);
        EXPECT_EQ(ReadTree(small), (std::map<std::string, std::string>{{"registry", saved}}));
        EXPECT_EQ(registry.Set("B", "b"), result::kSuccess);
        EXPECT_EQ(file.SaveUnsaved(), result::kSuccess);
        EXPECT_EQ(RegistryFile(small + "/registry").Values().size(), 2u);
    });
    RegistryFile vanishedFile(folder_ / "gone/registry");
    AppRegistry vanished = Access::MakeRegistry(vanishedFile);
    EXPECT_FALSE(vanishedFile.WasDamaged());
    EXPECT_EQ(vanished.Save(), result::kFileNotFound);
}

TEST_F(RegistryTest, AKilledSaveLeavesOneStateOrTheOther) {
    std::minstd_rand random(3);
    {
        RegistryFile file(path_);
        AppRegistry registry = Access::MakeRegistry(file);
        ASSERT_EQ(registry.Add("LEFT", 0), result::kSuccess);
        ASSERT_EQ(registry.Add("RIGHT", 0), result::kSuccess);
        ASSERT_EQ(registry.Save(), result::kSuccess);
    }
    int last = 0;
    for (int round = 0; round < 60; ++round) {
        const std::string saved = Testing::KilledAfter(
            std::chrono::microseconds(1000 + random() % 10000), [&](int report) {
                RegistryFile file(path_);
                AppRegistry registry = Access::MakeRegistry(file);
                for (int value = last + 1;; ++value) {
                    const bool done = Succeeded(registry.Set("LEFT", value)) &&
                                      Succeeded(registry.Set("RIGHT", value)) &&
                                      Succeeded(registry.Save()) && write(report, ".", 1) == 1;
                    if (!done) return;
                }
            });
        Io::RemoveStaleTemporaries(folder_.Path());
        EXPECT_EQ(ReadTree(folder_.Path()).size(), 1u);
        RegistryFile file(path_);
        AppRegistry registry = Access::MakeRegistry(file);
        int left = -1;
        int right = -2;
        EXPECT_EQ(registry.Get("LEFT", left), result::kSuccess);
        EXPECT_EQ(registry.Get("RIGHT", right), result::kSuccess);
        EXPECT_EQ(left, right);
        EXPECT_GE(left, last + static_cast<int>(saved.size()));
        last = left;
    }
    EXPECT_GT(last, 0);
}

}  // namespace
}  // namespace Osp::App
