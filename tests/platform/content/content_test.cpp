#include <chrono>
#include <filesystem>
#include <glib.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <sys/stat.h>
#include <vector>

#include <osp/content/content_manager.h>
#include <osp/content/image_content_info.h>

#include "osp/base/event_loop.h"
#include "osp/content/content_store.h"
#include "osp/io/safe_file.h"
#include "osp/io/storage_map.h"
#include "tests/support/faults.h"
#include "tests/support/product.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Content {
namespace {

namespace fs = std::filesystem;
using Base::String;
using Testing::ReadText;
using Testing::ReadTree;
using Testing::TemporaryFolder;
using Testing::WriteText;

/// Files of these tests tell their own description after "EXIF:" and are 40 x 30 then.
std::optional<EmbeddedInfo> ReadEmbedded(const std::string& realPath) {
    const std::string content = ReadText(realPath);
    if (!content.starts_with("EXIF:")) return std::nullopt;
    return EmbeddedInfo{.description = content.substr(5), .width = 40, .height = 30};
}

/// A phone's storage under `data` with its content store, from start to clean end.
struct PhoneRun {
    explicit PhoneRun(const std::string& data)
        : storage(
              {.product = Testing::kProduct, .dataFolder = data, .resourceFolder = data + "/res"}),
          prepared(storage.Prepare()),
          store(storage, ReadEmbedded) {
        EXPECT_EQ(manager.Construct(), result::kSuccess);
    }

    result Create(ImageContentInfo& info, const char* path, const char* description = "") {
        const result r = info.Construct(path, "", false);
        if (Failed(r)) return r;
        info.SetDescription(description);
        return manager.CreateContent(info);
    }
    /// The registered description of the file at `path`.
    std::string Describe(const char* path, const char* description = "") {
        ImageContentInfo info;
        EXPECT_EQ(Create(info, path, description), result::kSuccess) << path;
        return info.GetDescription().ToUtf8();
    }

    Io::StorageMap storage;
    Service<Io::StorageMap>::Installed installedStorage{storage};
    result prepared;
    ContentStore store;
    Service<ContentStore>::Installed installedStore{store};
    ContentManager manager;
};

constexpr const char* kFirst = "/Media/Images/KIVO0000.jpg";
constexpr const char* kSecond = "/Media/Images/KIVO0001.jpg";

class ContentTest : public testing::Test {
  protected:
    ContentTest() {
        fs::create_directories(folder_ / "Media/Images");
        Write(kFirst, "EXIF:own");
        Write(kSecond, "plain");
    }
    void Write(const char* path, const std::string& content) {
        WriteText(folder_.Path() + path, content);
    }

    TemporaryFolder folder_;
    std::string database_ = folder_ / "test-camera/contents.db";
};

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
    EXPECT_EQ(info.Construct("", "", false), result::kInvalidArgument);
    EXPECT_EQ(info.Construct("/Media/Images/no.jpg", "", true), result::kFileNotFound);
    for (const char* path : {"/Media/Images/no.jpg", "/Media/Images", "/Storagecard/a.jpg"}) {
        EXPECT_EQ(run.Create(info, path, "mine"), result::kFileNotFound) << path;
        EXPECT_EQ(info.GetDescription(), String("mine"));
        EXPECT_EQ(info.GetContentId(), 0);
    }
    EXPECT_EQ(run.Create(info, "/Media/Images/../a", "mine"), result::kInvalidArgument);
    ContentManager unconstructed;
    EXPECT_EQ(unconstructed.CreateContent(info), result::kInvalidState);
    EXPECT_EQ(unconstructed.DeleteContent(1), result::kInvalidState);
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

TEST_F(ContentTest, TheDatabaseOutlivesTheRunForItsOwnerOnly) {
    { EXPECT_EQ(PhoneRun(folder_.Path()).Describe(kSecond, "kept"), "kept"); }
    EXPECT_EQ(ReadTree(folder_ / "test-camera").size(), 1u) << "more than one file left";
    struct stat status;
    ASSERT_EQ(stat(database_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    PhoneRun run(folder_.Path());
    EXPECT_FALSE(run.store.WasDamaged());
    EXPECT_EQ(run.Describe(kSecond), "kept");
    ASSERT_EQ(stat((database_ + "-wal").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(ContentTest, ADamagedDatabaseIsSetAsideAndFilesDescribeThemselves) {
    {
        PhoneRun run(folder_.Path());
        run.Describe(kFirst, "row");
        for (int i = 0; i < 200; ++i) {
            const std::string path = "/Media/Images/F" + std::to_string(i);
            Write(path.c_str(), "x");
            run.Describe(path.c_str(), "filler filler filler filler");
        }
    }
    const std::string whole = ReadText(database_);
    ASSERT_GT(whole.size(), 20000u);
    std::string holed = whole;
    holed.replace(4096, 12288, std::string(12288, '\x55'));
    const std::vector<std::string> damaged = {
        whole.substr(0, whole.size() / 2), whole.substr(0, 4096),     whole.substr(0, 50),
        std::string(whole.size(), '\0'),   "not a database at all\n", holed};
    for (std::size_t i = 0; i < damaged.size(); ++i) {
        fs::remove_all(folder_ / "test-camera");
        fs::create_directory(folder_ / "test-camera");
        WriteText(database_, damaged[i]);
        {
            PhoneRun run(folder_.Path());
            EXPECT_TRUE(run.store.WasDamaged()) << i;
            EXPECT_TRUE(run.store.IsNew()) << i;
            EXPECT_EQ(run.Describe(kFirst), "own") << i;
            EXPECT_EQ(run.Describe(kSecond, "new"), "new") << i;
        }
        EXPECT_EQ(ReadText(database_ + ".damaged-1"), damaged[i]) << i;
        PhoneRun run(folder_.Path());
        EXPECT_FALSE(run.store.WasDamaged()) << i;
        EXPECT_FALSE(run.store.IsNew()) << i;
        EXPECT_EQ(run.Describe(kSecond), "new") << i;
    }
}

TEST_F(ContentTest, ADatabaseOfANewerVersionIsLeftAlone) {
    { PhoneRun(folder_.Path()).Describe(kSecond, "theirs"); }
    std::string newer = ReadText(database_);
    newer[63] = 9;  // the last byte of the schema version
    WriteText(database_, newer);
    {
        PhoneRun run(folder_.Path());
        EXPECT_TRUE(run.store.IsNewer());
        EXPECT_FALSE(run.store.WasDamaged());
        EXPECT_FALSE(run.store.IsNew());
        EXPECT_EQ(run.Describe(kSecond, "held in memory"), "held in memory");
    }
    EXPECT_EQ(ReadTree(folder_ / "test-camera"),
              (std::map<std::string, std::string>{{"contents.db", newer}}));
}

TEST_F(ContentTest, LookingAtAFileDoesNotRegisterIt) {
    PhoneRun run(folder_.Path());
    ContentRecord record;
    EXPECT_EQ(run.store.Describe(kFirst, record), result::kSuccess);
    EXPECT_EQ(record.description, String("own"));
    EXPECT_EQ(record.width, 40);
    EXPECT_EQ(record.id, 0);
    EXPECT_EQ(run.Describe(kFirst, "registered"), "registered");
    EXPECT_EQ(run.store.Describe(kFirst, record), result::kSuccess);
    EXPECT_EQ(record.description, String("registered"));
    EXPECT_EQ(run.store.Describe("/Media/Images/no.jpg", record), result::kFileNotFound);
}

TEST_F(ContentTest, AnUnusablePlaceNeverStopsTheStore) {
    fs::create_directories(database_ + "/inner");
    {
        PhoneRun run(folder_.Path());
        EXPECT_TRUE(run.store.WasDamaged());
        EXPECT_EQ(run.Describe(kFirst), "own");
    }
    EXPECT_TRUE(fs::is_directory(database_ + ".damaged-1/inner"));
    fs::remove(database_);
    ASSERT_EQ(mkfifo(database_.c_str(), 0600), 0);
    { EXPECT_TRUE(PhoneRun(folder_.Path()).store.WasDamaged()) << "a pipe"; }
    fs::remove_all(folder_ / "test-camera");
    WriteText(folder_ / "test-camera", "a file in the way");
    PhoneRun run(folder_.Path());
    EXPECT_NE(run.prepared, result::kSuccess);
    EXPECT_FALSE(run.store.WasDamaged());
    EXPECT_EQ(run.Describe(kSecond, "held in memory"), "held in memory");
    EXPECT_EQ(run.Describe(kSecond), "held in memory");
}

TEST_F(ContentTest, TwoProcessesShareTheDatabase) {
    PhoneRun run(folder_.Path());
    EXPECT_EQ(run.Describe(kFirst, "ours"), "ours");
    Testing::InOwnProcess([&] {
        PhoneRun other(folder_.Path());
        EXPECT_FALSE(other.store.WasDamaged());
        EXPECT_EQ(other.Describe(kFirst), "ours");
        EXPECT_EQ(other.Describe(kSecond, "theirs"), "theirs");
    });
    EXPECT_EQ(run.Describe(kSecond), "theirs");
}

// On a small file system only; where none can be mounted, no single file grows.
TEST_F(ContentTest, AFullDiskHarmsNoRowAndNoDatabase) {
    const std::string small = folder_ / "small";
    fs::create_directory(small);
    Testing::InOwnProcess([&] {
        Testing::LimitSpace(small, 256 * 1024);
        fs::create_directories(small + "/Media/Images");
        WriteText(small + kSecond, "plain");
        int stored = 0;
        {
            PhoneRun run(small);
            EXPECT_EQ(run.Describe(kSecond, "row"), "row");
            const std::string bulk(8000, 'b');
            result r = result::kSuccess;
            for (; stored < 1000 && Succeeded(r); ++stored) {
                const std::string path = "/Media/Images/F" + std::to_string(stored);
                WriteText(small + path, "");
                ImageContentInfo info;
                r = run.Create(info, path.c_str(), bulk.c_str());
            }
            EXPECT_TRUE(r == result::kStorageFull || r == result::kIo);
            EXPECT_LT(stored, 1000);
            EXPECT_EQ(run.Describe(kSecond), "row");
        }
        PhoneRun run(small);
        EXPECT_FALSE(run.store.WasDamaged());
        EXPECT_EQ(fs::exists(small + "/test-camera/contents.db.damaged-1"), false);
        ImageContentInfo info;
        EXPECT_EQ(run.Create(info, kSecond), result::kSuccess);
    });
}

TEST_F(ContentTest, KilledRunsLoseNoRegisteredContent) {
    std::minstd_rand random(5);
    int last = 0;
    for (int round = 0; round < 40; ++round) {
        const std::string reported = Testing::KilledAfter(
            std::chrono::microseconds(5000 + random() % 20000), [&](int report) {
                PhoneRun run(folder_.Path());
                for (int number = last;; ++number) {
                    const std::string path = "/Media/Images/N" + std::to_string(number);
                    Write(path.c_str(), "x");
                    run.Describe(path.c_str(), path.c_str());
                    if (write(report, ".", 1) != 1) return;
                }
            });
        PhoneRun run(folder_.Path());
        EXPECT_FALSE(run.store.WasDamaged());
        const int end = last + static_cast<int>(reported.size());
        for (; last < end; ++last) {
            const std::string path = "/Media/Images/N" + std::to_string(last);
            EXPECT_EQ(run.Describe(path.c_str()), path);
        }
    }
    EXPECT_GT(last, 0);
}

void Photograph(PhoneRun& run, int number, const std::string& description) {
    const std::string path = "/Media/Images/KIVO" + std::to_string(number) + ".jpg";
    std::string realPath;
    ASSERT_EQ(run.storage.Resolve(path.c_str(), Io::Access::kWrite, realPath), result::kSuccess);
    ASSERT_EQ(
        Io::WriteFileSafely(realPath, "EXIF:" + description, {.modifiedMs = Io::NewFileDateMs()}),
        result::kSuccess);
    EXPECT_EQ(run.Describe(path.c_str(), description.c_str()), description);
}

TEST(Content, RunsThatDoTheSameLeaveTheSameBytes) {
    std::vector<std::map<std::string, std::string>> trees;
    for (int run = 0; run < 2; ++run) {
        const TemporaryFolder folder;
        for (int start = 0; start < 3; ++start) {
            Base::VirtualClock clock;
            Base::EventLoop loop(clock);
            const Service<Base::EventLoop>::Installed installed(loop);
            PhoneRun phone(folder.Path());
            for (int i = 0; i < 60; ++i) {
                clock.AdvanceTo(std::chrono::milliseconds(40 * i));
                Photograph(phone, 1000 + 60 * start + i, "photograph " + std::to_string(i));
            }
            for (const ContentId id : {3, 17, 18, 19, 60}) {
                EXPECT_EQ(phone.manager.DeleteContent(id + 60 * start), result::kSuccess);
            }
        }
        trees.push_back(ReadTree(folder.Path()));
        g_usleep(20000);
    }
    ASSERT_EQ(trees[0].size(), trees[1].size());
    for (const auto& [name, content] : trees[0]) {
        EXPECT_TRUE(trees[1].at(name) == content) << name << " differs";
    }
    EXPECT_EQ(trees[0].count("test-camera/contents.db"), 1u);
    EXPECT_EQ(trees[0].size(), 166u);
}

}  // namespace
}  // namespace Osp::Content
