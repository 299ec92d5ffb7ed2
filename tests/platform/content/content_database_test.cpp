#include <chrono>
#include <filesystem>
#include <glib.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "osp/base/event_loop.h"
#include "osp/io/safe_file.h"
#include "tests/platform/content/content_fixture.h"
#include "tests/support/faults.h"

namespace Osp::Content {
namespace {

namespace fs = std::filesystem;
using Testing::ReadText;
using Testing::ReadTree;
using Testing::TemporaryFolder;
using Testing::WriteText;

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
