#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

#include "tests/platform/content/content_fixture.h"
#include "tests/support/faults.h"

namespace Osp::Content {
namespace {

namespace fs = std::filesystem;
using Base::String;

TEST_F(ContentTest, CreatedContentIsReadBackWhole) {
    PhoneRun run(folder_.Path());
    ImageContentInfo info;
    ASSERT_EQ(run.Create(info, kFirst, "KIVO (B&W),1X"), result::kSuccess);
    EXPECT_EQ(info.GetDescription(), String("KIVO (B&W),1X"));
    EXPECT_EQ(info.GetContentName(), String("KIVO0000.jpg"));
    EXPECT_EQ(info.GetWidth(), 40);
    EXPECT_EQ(info.GetHeight(), 30);
    EXPECT_EQ(info.GetContentSize(), 8);
    struct stat status;
    ASSERT_EQ(stat((folder_.Path() + kFirst).c_str(), &status), 0);
    EXPECT_EQ(info.GetDateMs(), status.st_mtim.tv_sec * 1000 + status.st_mtim.tv_nsec / 1000000);
    EXPECT_EQ(run.Describe(kSecond, "second"), "second");
    EXPECT_EQ(run.Describe(kFirst), "KIVO (B&W),1X");
    EXPECT_EQ(run.Describe(kFirst, "another"), "KIVO (B&W),1X");
}

TEST_F(ContentTest, WhatCannotBeRegisteredLeavesEverythingAlone) {
    PhoneRun run(folder_.Path());
    ImageContentInfo info;
    for (const char* path : {"/Media/Images/no.jpg", "/Media/Images", "/Storagecard/a.jpg"}) {
        EXPECT_EQ(run.Create(info, path, "mine"), result::kFileNotFound) << path;
        EXPECT_EQ(info.GetDescription(), String("mine"));
        EXPECT_EQ(info.GetContentId(), 0);
    }
    EXPECT_EQ(run.Create(info, "/Media/Images/../a", "mine"), result::kInvalidArgument);
}

TEST_F(ContentTest, ARewrittenFileIsNotTakenForTheRegisteredOne) {
    PhoneRun run(folder_.Path());
    ImageContentInfo before;
    ASSERT_EQ(run.Create(before, kFirst, "before"), result::kSuccess);
    Write(kFirst, "EXIF:another one");
    ImageContentInfo after;
    ASSERT_EQ(run.Create(after, kFirst, "after"), result::kSuccess);
    EXPECT_EQ(after.GetDescription(), String("after"));
    EXPECT_EQ(after.GetContentId(), before.GetContentId());
    // Of the same length, and possibly within the tick of the file system's clock: its date tells.
    Write(kFirst, "EXIF:a third one");
    const std::string file = folder_.Path() + kFirst;
    fs::last_write_time(file, fs::last_write_time(file) + std::chrono::milliseconds(1));
    EXPECT_EQ(run.Describe(kFirst), "a third one");
    Write(kFirst, "stripped");
    EXPECT_EQ(run.Describe(kFirst), "a third one");
}

TEST_F(ContentTest, DeletingRemovesFileAndRow) {
    PhoneRun run(folder_.Path());
    ImageContentInfo first;
    ImageContentInfo second;
    ASSERT_EQ(run.Create(first, kFirst, "1"), result::kSuccess);
    ASSERT_EQ(run.Create(second, kSecond, "2"), result::kSuccess);
    EXPECT_EQ(run.manager.DeleteContent(second.GetContentId()), result::kSuccess);
    EXPECT_FALSE(fs::exists(folder_.Path() + kSecond));
    EXPECT_EQ(run.manager.DeleteContent(second.GetContentId()), result::kObjectNotFound);
    Write(kSecond, "new");
    const ContentId old = second.GetContentId();
    ASSERT_EQ(run.Create(second, kSecond), result::kSuccess);
    EXPECT_EQ(second.GetDescription(), String(""));
    EXPECT_NE(second.GetContentId(), old);
    fs::remove(folder_.Path() + kFirst);
    EXPECT_EQ(run.manager.DeleteContent(first.GetContentId()), result::kSuccess);
}

TEST_F(ContentTest, AFileThatCannotBeDeletedStaysRegistered) {
    fs::permissions(folder_.Path(), fs::perms::all);
    fs::permissions(folder_ / "Media/Images", fs::perms(0555));
    Testing::InOwnProcess([&] {
        Testing::ObeyFileModes();
        PhoneRun run(folder_.Path());
        ImageContentInfo info;
        ASSERT_EQ(run.Create(info, kSecond, "2"), result::kSuccess);
        EXPECT_EQ(run.manager.DeleteContent(info.GetContentId()), result::kPermissionDenied);
        EXPECT_EQ(run.Describe(kSecond), "2");
    });
}

}  // namespace
}  // namespace Osp::Content
