#include <gtest/gtest.h>
#include <random>
#include <string>
#include <sys/stat.h>
#include <vector>

#include <osp/app/app_registry.h>

#include "osp/app/access.h"
#include "osp/app/registry_file.h"
#include "tests/support/faults.h"
#include "tests/support/temporary_folder.h"

namespace Osp::App {
namespace {

using Base::String;
using Testing::ReadText;
using Testing::ReadTree;
using Testing::TemporaryFolder;
using Testing::WriteText;

/// The file, and what the application is lent of it.
struct Settings {
    explicit Settings(const std::string& path) : file(path) {}

    RegistryFile file;
    AppRegistry registry = Access::MakeRegistry(file);
};

class RegistryTest : public testing::Test {
  protected:
    void Fill() {
        auto [file, registry] = Settings(path_);
        EXPECT_EQ(registry.Add("CAM_TYPE", "2"), result::kSuccess);
        EXPECT_EQ(registry.Add("CAPTURE_WIDTH", 1280), result::kSuccess);
        EXPECT_EQ(registry.Add("TW_TOKEN", " a=b;\n\xC3\xA4\\[x] "), result::kSuccess);
        EXPECT_EQ(registry.Save(), result::kSuccess);
    }

    TemporaryFolder folder_;
    std::string path_ = folder_ / "registry";
};

TEST_F(RegistryTest, AValueIsAddedOnceThenSetThenRemoved) {
    auto [file, registry] = Settings(path_);
    String text("default");
    int number = 7;
    EXPECT_EQ(registry.Set("CAM_TYPE", "1"), result::kKeyNotFound);
    EXPECT_EQ(registry.Add("CAM_TYPE", "1"), result::kSuccess);
    EXPECT_EQ(registry.Add("CAM_TYPE", "2"), result::kKeyAlreadyExists);
    EXPECT_EQ(registry.Get("CAM_TYPE", number), result::kInvalidFormat);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(registry.Get("CAM_TYPE", text), result::kSuccess);
    EXPECT_EQ(text, String("1"));
    EXPECT_EQ(registry.Set("CAM_TYPE", -3), result::kSuccess);
    EXPECT_EQ(registry.Get("CAM_TYPE", text), result::kInvalidFormat);
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
    auto [file, registry] = Settings(path_);
    EXPECT_FALSE(file.WasDamaged());
    String text;
    int number = 0;
    EXPECT_EQ(registry.Get("TW_TOKEN", text), result::kSuccess);
    EXPECT_EQ(text, String(" a=b;\n\xC3\xA4\\[x] "));
    EXPECT_EQ(registry.Get("CAPTURE_WIDTH", number), result::kSuccess);
    EXPECT_EQ(number, 1280);
    EXPECT_EQ(Testing::ModeOf(path_), 0600u);
}

TEST_F(RegistryTest, OnlyWhatIsUnsavedIsSavedAtTheEnd) {
    auto [file, registry] = Settings(path_);
    EXPECT_EQ(file.SaveUnsaved(), result::kSuccess);
    EXPECT_TRUE(ReadTree(folder_.Path()).empty());
    Fill();
    auto [laterFile, later] = Settings(path_);
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
    auto [file, registry] = Settings(path);
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

TEST_F(RegistryTest, WhatIsNoFileIsSetAsideAndNotWaitedFor) {
    std::filesystem::create_directories(folder_ / "a folder/inner");
    ASSERT_EQ(mkfifo((folder_ / "a pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", folder_ / "endless");
    for (const char* name : {"a folder", "a pipe", "endless"}) {
        const std::string path = folder_ / name;
        auto [file, registry] = Settings(path);
        EXPECT_TRUE(file.WasDamaged()) << path;
        EXPECT_EQ(registry.Save(), result::kSuccess);
        EXPECT_FALSE(std::filesystem::is_regular_file(path + ".damaged-1"));
        EXPECT_TRUE(std::filesystem::exists(path + ".damaged-1"));
    }
    EXPECT_TRUE(std::filesystem::exists(folder_ / "a folder.damaged-1/inner"));
}

TEST_F(RegistryTest, OneOfANewerVersionIsLeftAlone) {
    const std::string newer = "[Registry]\nVersion=2\nShape=another\n[Texts]\nCAM_TYPE=2\n";
    WriteText(path_, newer);
    auto [file, registry] = Settings(path_);
    EXPECT_TRUE(file.IsNewer());
    EXPECT_EQ(registry.Add("CAM_TYPE", "3"), result::kSuccess) << "it holds nothing";
    EXPECT_EQ(file.SaveUnsaved(), result::kPermissionDenied);
    EXPECT_EQ(ReadText(path_), newer);
}

TEST_F(RegistryTest, AFailedSaveKeepsTheFileAndTheChanges) {
    Fill();
    Testing::InOwnProcess([&] {
        const std::string small = folder_ / "small";
        std::filesystem::create_directory(small);
        Testing::LimitSpace(small, 16 * 1024);
        auto [file, registry] = Settings(small + "/registry");
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
    auto [vanishedFile, vanished] = Settings(folder_ / "gone/registry");
    EXPECT_FALSE(vanishedFile.WasDamaged());
    EXPECT_EQ(vanished.Save(), result::kFileNotFound);
}

}  // namespace
}  // namespace Osp::App
