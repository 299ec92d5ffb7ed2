#include "osp/io/safe_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <sstream>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <utility>
#include <vector>

#include "osp/base/event_loop.h"
#include "osp/io/temporary_file.h"
#include "tests/support/faults.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_loop.h"

namespace Osp::Io {
namespace {

using Testing::InOwnProcess;
using Testing::ReadText;
using Testing::ReadTree;
using Testing::TemporaryFolder;
using Testing::WriteText;
using Tree = std::map<std::string, std::string>;

std::vector<Base::byte> Block(std::size_t sizeBytes) {
    return std::vector<Base::byte>(sizeBytes, 0xA5);
}

TEST(SafeFile, WritesTheWholeContentWithItsModeAndDate) {
    const TemporaryFolder folder;
    const std::string path = folder / "a.bin";
    ASSERT_EQ(WriteFileSafely(path, "new", {.mode = 0600, .modifiedMs = 1767268800123}),
              result::kSuccess);
    ASSERT_EQ(WriteFileSafely(path, "newer", {.mode = 0600, .modifiedMs = 1767268800456}),
              result::kSuccess);
    EXPECT_EQ(ReadTree(folder.Path()), (Tree{{"a.bin", "newer"}}));
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    EXPECT_EQ(status.st_mtim.tv_sec, 1767268800);
    EXPECT_EQ(status.st_mtim.tv_nsec, 456'000'000);
}

TEST(SafeFile, LetsNobodyReadAFileWhoCouldNotReadTheOlderOne) {
    const TemporaryFolder folder;
    const std::string path = folder / "a.bin";
    const auto modeAfter = [&path](mode_t older, mode_t asked) {
        chmod(path.c_str(), older);
        EXPECT_EQ(WriteFileSafely(path, "new", {.mode = asked}), result::kSuccess);
        return Testing::ModeOf(path);
    };
    WriteText(path, "old");
    EXPECT_EQ(modeAfter(0640, 0666), 0640u);
    EXPECT_EQ(modeAfter(0666, 0666), 0666u) << "whatever the mask";
    EXPECT_EQ(modeAfter(0644, 0600), 0600u);
}

TEST(SafeFile, DatesFollowAVirtualClockOnly) {
    EXPECT_FALSE(NewFileDateMs());
    Testing::TestLoop test;
    test.Pass(std::chrono::milliseconds(250));
    EXPECT_EQ(NewFileDateMs(), test.Clock().EpochMs());
    Base::RealClock real;
    Base::EventLoop realLoop(real);
    const Service<Base::EventLoop>::Installed realInstalled(realLoop);
    EXPECT_FALSE(NewFileDateMs());
}

TEST(SafeFile, KeepsOrRefusesWhatStandsInItsWay) {
    const TemporaryFolder folder;
    const std::string path = folder / "KIVO1000.jpg";
    for (const char* content : {"first", "second", "third"}) {
        ASSERT_EQ(WriteFileSafely(path, content, {.replace = Replace::kKeepOld}), result::kSuccess);
    }
    EXPECT_EQ(WriteFileSafely(path, "fourth", {.replace = Replace::kRefuse}),
              result::kKeyAlreadyExists);
    EXPECT_EQ(ReadTree(folder.Path()), (Tree{{"KIVO1000.jpg", "third"},
                                             {"old-1-KIVO1000.jpg", "first"},
                                             {"old-2-KIVO1000.jpg", "second"}}));
}

TEST(SafeFile, NeverRunsOutOfNamesForWhatItKeeps) {
    const TemporaryFolder folder;
    WriteText(folder / "a", "older");
    WriteText(folder / "b", "once");
    std::filesystem::create_hard_link(folder / "b", folder / "old-1-b");  // by a killed run
    WriteText(folder / "old-10000-a", "oldest");
    WriteText(folder / "old-20000-c", "another");
    WriteText(folder / "old-x-a", "no number");
    for (const char* name : {"a", "b"}) {
        ASSERT_EQ(WriteFileSafely(folder / name, "new", {.replace = Replace::kKeepOld}),
                  result::kSuccess);
    }
    EXPECT_EQ(ReadTree(folder.Path()), (Tree{{"a", "new"},
                                             {"b", "new"},
                                             {"old-1-b", "once"},
                                             {"old-10000-a", "oldest"},
                                             {"old-10001-a", "older"},
                                             {"old-20000-c", "another"},
                                             {"old-x-a", "no number"}}));
}

/// Stores 50 contents of its own among those of other writers: all under one name, or each under
/// the next name that nobody has.
void StoreAmongOthers(const TemporaryFolder& folder, Replace replace, int writer) {
    int number = 0;
    for (int i = 0; i < 50; ++i) {
        const std::string content = std::to_string(writer * 1000 + i);
        result r = result::kKeyAlreadyExists;
        while (r == result::kKeyAlreadyExists) {
            if (replace == Replace::kRefuse) ++number;
            r = WriteFileSafely(folder / std::to_string(number), content, {.replace = replace});
        }
        ASSERT_EQ(r, result::kSuccess);
    }
}

TEST(SafeFile, WritersAtOnceLoseNothingOfEachOthers) {
    constexpr int kWriters = 3;
    const std::vector<std::vector<std::pair<int, int>>> missing = {
        {}, {{SYS_renameat2, EINVAL}}, {{SYS_renameat2, ENOSYS}, {SYS_linkat, EPERM}}};
    for (std::size_t system = 0; system < missing.size(); ++system) {
        for (const auto replace : {Replace::kKeepOld, Replace::kRefuse}) {
            SCOPED_TRACE(testing::Message()
                         << "file system " << system << ", replace " << static_cast<int>(replace));
            const TemporaryFolder folder;
            Testing::InProcessesAtOnce(kWriters, [&](int writer) {
                for (const auto& [call, error] : missing[system]) Testing::RefuseCall(call, error);
                StoreAmongOthers(folder, replace, writer);
            });
            std::set<std::string> contents;
            for (const auto& [name, content] : ReadTree(folder.Path())) contents.insert(content);
            EXPECT_EQ(contents.size(), 50u * kWriters);
            EXPECT_EQ(ReadTree(folder.Path()).size(), 50u * kWriters) << "nothing left over";
        }
    }
}

TEST(SafeFile, AFullDiskLeavesTheOlderFileAndNothingElse) {
    const TemporaryFolder folder;
    InOwnProcess([&] {
        Testing::LimitSpace(folder.Path(), 64 * 1024);
        ASSERT_EQ(WriteFileSafely(folder / "a", "old"), result::kSuccess);
        for (const auto replace : {Replace::kOverwrite, Replace::kKeepOld}) {
            EXPECT_EQ(WriteFileSafely(folder / "a", Block(256 * 1024), {.replace = replace}),
                      result::kStorageFull);
        }
        EXPECT_EQ(WriteFileSafely(folder / "b", Block(256 * 1024)), result::kStorageFull);
        EXPECT_EQ(ReadTree(folder.Path()), (Tree{{"a", "old"}}));
        EXPECT_EQ(WriteFileSafely(folder / "b", "fits"), result::kSuccess);
    });
}

TEST(SafeFile, ReadOnlyAndVanishedFoldersAreToldApart) {
    const TemporaryFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
    const std::string readOnly = folder / "read-only";
    std::filesystem::create_directory(readOnly);
    WriteText(readOnly + "/a", "old");
    std::filesystem::permissions(readOnly, std::filesystem::perms(0555));
    InOwnProcess([&] {
        Testing::ObeyFileModes();
        EXPECT_EQ(WriteFileSafely(readOnly + "/a", "new"), result::kPermissionDenied);
        EXPECT_EQ(WriteFileSafely(readOnly + "/b", "new"), result::kPermissionDenied);
    });
    EXPECT_EQ(WriteFileSafely(folder / "gone/a", "new"), result::kFileNotFound);
    EXPECT_EQ(WriteFileSafely(readOnly + "/a/b", "new"), result::kFileNotFound);
    EXPECT_EQ(ReadTree(folder.Path()), (Tree{{"read-only/a", "old"}}));
}

// In a sticky folder, what belongs to somebody else can be read but not replaced.
TEST(SafeFile, AFailedReplacementTakesBackTheKeptName) {
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can set the scene";
    const TemporaryFolder folder;
    WriteText(folder / "a", "old");
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(01777));
    InOwnProcess([&] {
        constexpr uid_t kNobody = 65534;
        ASSERT_EQ(setresuid(kNobody, kNobody, kNobody), 0);
        for (const auto replace : {Replace::kOverwrite, Replace::kKeepOld}) {
            EXPECT_EQ(WriteFileSafely(folder / "a", "new", {.replace = replace}),
                      result::kPermissionDenied);
        }
    });
    EXPECT_EQ(ReadTree(folder.Path()), (Tree{{"a", "old"}}));
}

TEST(StaleTemporaries, GoOnlyWhenTheyAreOursAndNobodyWritesThem) {
    const TemporaryFolder folder;
    const std::vector<std::string> foreign = {".osp-notes.tmp", ".osp-1-2.tmp.txt", ".a.tmp",
                                              ".osp-.tmp",      ".osp-1-.tmp",      "osp-1-2.tmp"};
    for (const auto& name : foreign) WriteText(folder / name, "keep");
    WriteText(folder / ".osp-1-1.tmp", "stale");
    const FileDescriptor opened(open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY));
    FileDescriptor file;
    TransientName name(opened.Get());
    ASSERT_EQ(CreateTemporary(opened.Get(), 0600, file, name), result::kSuccess);
    ASSERT_TRUE(IsTemporaryName(name.Get()));

    InOwnProcess([&] { RemoveStaleTemporaries(folder.Path()); });
    EXPECT_EQ(ReadTree(folder.Path()).count(name.Get()), 1u);
    EXPECT_EQ(ReadTree(folder.Path()).size(), foreign.size() + 1);
    file = FileDescriptor();
    RemoveStaleTemporaries(folder.Path());
    EXPECT_EQ(ReadTree(folder.Path()).size(), foreign.size());
}

/// Large, and nothing but that number.
std::string Numbered(unsigned number) {
    std::string text;
    while (text.size() < 128 * 1024) text += std::to_string(number) + " ";
    return text;
}

/// The number that fills `content`; fails where it is not whole.
unsigned NumberOf(const std::string& name, const std::string& content) {
    const auto number = static_cast<unsigned>(std::strtoul(content.c_str(), nullptr, 10));
    EXPECT_TRUE(content == Numbered(number)) << name << " of " << content.size() << " bytes";
    return number;
}

void SaveEndlessly(const TemporaryFolder& folder, unsigned first, int report) {
    for (unsigned number = first;; ++number) {
        const std::string text = Numbered(number);
        const bool done =
            Succeeded(
                WriteFileSafely(folder / "KIVO1000.jpg", text, {.replace = Replace::kKeepOld})) &&
            Succeeded(WriteFileSafely(folder / ("KIVO-" + std::to_string(number)), text)) &&
            dprintf(report, "%u ", number) > 0;
        if (!done) return;
    }
}

TEST(SafeFile, KilledWritersLeaveEveryFileWholeAndNoneLost) {
    std::minstd_rand random(1);
    int staleRounds = 0;
    for (unsigned round = 0; round < 100; ++round) {
        const TemporaryFolder folder;
        WriteText(folder / "older", "untouched");
        std::istringstream reported(Testing::KilledAfter(
            std::chrono::microseconds(2000 + random() % 20000),
            [&](int report) { SaveEndlessly(folder, round * 1000 + 1, report); }));

        const bool hadStale = std::ranges::any_of(
            ReadTree(folder.Path()), [](const auto& file) { return IsTemporaryName(file.first); });
        staleRounds += hadStale ? 1 : 0;
        RemoveStaleTemporaries(folder.Path());
        auto files = ReadTree(folder.Path());
        EXPECT_EQ(files.extract("older").mapped(), "untouched");
        std::set<unsigned> single;
        std::set<unsigned> kept;
        for (const auto& [name, content] : files) {
            EXPECT_NE(name.front(), '.');
            (name.starts_with("KIVO-") ? single : kept).insert(NumberOf(name, content));
        }
        for (unsigned number = 0; reported >> number;) {
            EXPECT_TRUE(single.contains(number) && kept.contains(number)) << number;
        }
    }
    EXPECT_GT(staleRounds, 0) << "no writer was hit at work";
}

TEST(SetAside, FindsAFreeName) {
    const TemporaryFolder folder;
    for (const char* content : {"one", "two"}) {
        WriteText(folder / "a", content);
        EXPECT_TRUE(SetAside(folder / "a"));
    }
    EXPECT_FALSE(SetAside(folder / "a"));
    EXPECT_EQ(ReadTree(folder.Path()), (Tree{{"a.damaged-1", "one"}, {"a.damaged-2", "two"}}));
}

}  // namespace
}  // namespace Osp::Io
