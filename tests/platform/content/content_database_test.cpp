#include <chrono>
#include <filesystem>
#include <glib.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "osp/io/safe_file.h"
#include "tests/platform/content/content_fixture.h"
#include "tests/support/faults.h"
#include "tests/support/test_loop.h"

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
    EXPECT_EQ(Testing::ModeOf(database_), 0600u);
    PhoneRun run(folder_.Path());
    EXPECT_FALSE(run.store.WasDamaged());
    EXPECT_EQ(run.Describe(kSecond), "kept");
    EXPECT_EQ(Testing::ModeOf(database_ + "-wal"), 0600u);
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

TEST(Content, RunsThatDoTheSameLeaveTheSameBytes) {
    std::vector<std::map<std::string, std::string>> trees;
    for (int run = 0; run < 2; ++run) {
        const TemporaryFolder folder;
        for (int start = 0; start < 3; ++start) {
            Testing::TestLoop test;
            PhoneRun phone(folder.Path());
            for (int i = 0; i < 60; ++i) {
                test.Pass(std::chrono::milliseconds(40));
                const std::string name =
                    "/Media/Images/KIVO" + std::to_string(1000 + 60 * start + i) + ".jpg";
                ASSERT_EQ(Io::WriteFileSafely(folder.Path() + name, "EXIF:" + name,
                                              {.modifiedMs = Io::NewFileDateMs()}),
                          result::kSuccess);
                phone.Describe(name.c_str(), "described");
            }
            for (const ContentId id : {3, 17, 18, 19, 60}) {
                EXPECT_EQ(phone.manager.DeleteContent(id + 60 * start), result::kSuccess);
            }
        }
        trees.push_back(ReadTree(folder.Path()));
        g_usleep(20000);
    }
    EXPECT_TRUE(trees[0] == trees[1]);
    EXPECT_EQ(trees[0].count("test-camera/contents.db"), 1u);
    EXPECT_EQ(trees[0].size(), 166u);
}

}  // namespace
}  // namespace Osp::Content
