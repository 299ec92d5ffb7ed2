// Three ways to take a name that refuse when somebody has it, from the best to the one that works
// everywhere: a renaming that refuses (ext4, btrfs, xfs, tmpfs), a hard link (older file systems),
// and an empty file of that name as a reservation (memory cards, which know neither). Each leaves,
// if the process is killed in its middle, what the next run recognises: nothing, two names of one
// file, or an empty file under the new name beside the whole one under the old.
#include "osp/io/new_name.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "osp/base/owner.h"
#include "osp/io/errno_result.h"
#include "osp/io/file_descriptor.h"

namespace Osp::Io {

namespace {

constexpr std::string_view kAsidePrefix = "old-";
constexpr mode_t kReservedMode = 0600;

result ResultOfCall(int returned) {
    return returned == 0 ? result::kSuccess : ResultOfErrno(errno);
}

bool IsSameFile(int folder, const char* a, const char* b) {
    struct stat statusA;
    struct stat statusB;
    return fstatat(folder, a, &statusA, AT_SYMLINK_NOFOLLOW) == 0 &&
           fstatat(folder, b, &statusB, AT_SYMLINK_NOFOLLOW) == 0 &&
           statusA.st_dev == statusB.st_dev && statusA.st_ino == statusB.st_ino;
}

/// For file systems that know neither a renaming that refuses nor links: the name is taken with an
/// empty file, which the renaming replaces; nobody may move that one aside meanwhile. Being killed
/// in between leaves it.
result RenameOverReserved(int folder, const char* from, const char* to) {
    const FileDescriptor reserved(
        openat(folder, to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kReservedMode));
    if (!reserved.IsOpen()) return ResultOfErrno(errno);
    if (renameat(folder, from, folder, to) == 0) return result::kSuccess;
    const int error = errno;
    unlinkat(folder, to, 0);
    // A folder replaces nothing but an empty folder anyway.
    if (error == ENOTDIR) return ResultOfCall(renameat(folder, from, folder, to));
    return ResultOfErrno(error);
}

result RenameByLink(int folder, const char* from, const char* to) {
    if (linkat(folder, from, folder, to, 0) == 0) return ResultOfCall(unlinkat(folder, from, 0));
    const bool knowsLinks = errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS;
    return knowsLinks ? ResultOfErrno(errno) : RenameOverReserved(folder, from, to);
}

/// The N of "old-N-NAME"; 0 for all other names.
unsigned long long AsideNumber(std::string_view entry, const std::string& name) {
    const std::string suffix = "-" + name;
    if (!entry.starts_with(kAsidePrefix) || !entry.ends_with(suffix)) return 0;
    if (entry.size() <= kAsidePrefix.size() + suffix.size()) return 0;
    entry.remove_prefix(kAsidePrefix.size());
    entry.remove_suffix(suffix.size());
    unsigned long long number = 0;
    const auto [end, error] = std::from_chars(entry.begin(), entry.end(), number);
    return error == std::errc{} && end == entry.end() ? number : 0;
}

unsigned long long HighestAside(int folder, const std::string& name) {
    FileDescriptor listed(openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const Base::Owner<DIR, closedir> entries(fdopendir(listed.Get()));
    if (!entries) return 0;
    (void)listed.Release();
    unsigned long long highest = 0;
    while (const dirent* entry = readdir(entries.get())) {
        highest = std::max(highest, AsideNumber(entry->d_name, name));
    }
    return highest;
}

}  // namespace

result RenameNew(int folder, const char* from, const char* to) {
    assert(folder == AT_FDCWD || (!std::strchr(from, '/') && !std::strchr(to, '/')));
    result r = ResultOfCall(renameat2(folder, from, folder, to, RENAME_NOREPLACE));
    if (Failed(r) && (errno == EINVAL || errno == ENOSYS)) r = RenameByLink(folder, from, to);
    // A run that was killed between linking and unlinking has left both names.
    if (r != result::kKeyAlreadyExists || !IsSameFile(folder, from, to)) return r;
    return ResultOfCall(unlinkat(folder, from, 0));
}

result MoveAside(int folder, const std::string& name, std::string& aside) {
    assert(!name.empty() && name.find('/') == std::string::npos);
    for (auto number = HighestAside(folder, name);;) {
        // The highest itself may be what a killed run has left.
        const std::string candidate =
            std::string(kAsidePrefix) + std::to_string(std::max(number, 1ULL)) + "-" + name;
        const result r = RenameNew(folder, name.c_str(), candidate.c_str());
        if (Succeeded(r)) aside = candidate;
        if (r != result::kKeyAlreadyExists) return r;
        number = std::max(number, 1ULL) + 1;
    }
}

}  // namespace Osp::Io
