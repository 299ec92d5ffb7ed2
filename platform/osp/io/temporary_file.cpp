// A temporary that lies about is either being written, by any process, or left by one that was
// killed. The lock tells them apart, because it goes with the process; age would not, because a
// memory card can take a minute. Two processes never make the same name (the process id is in it),
// except with one left by a process of the same id: then the next number is tried.
//
// Between creating and locking a file there is a moment in which a cleaner finds it unlocked and
// removes it. The writer therefore looks, once it has the lock, whether its file still has a name,
// and begins again if not.
#include "osp/io/temporary_file.h"

#include <atomic>
#include <cassert>
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "osp/io/errno_result.h"

namespace Osp::Io {

namespace {

constexpr std::string_view kPrefix = ".osp-";
constexpr std::string_view kSuffix = ".tmp";

std::string NextName() {
    static std::atomic<unsigned> lastNumber = 0;
    return std::string(kPrefix) + std::to_string(getpid()) + '-' + std::to_string(++lastNumber) +
           std::string(kSuffix);
}

void LockExclusively(int file) {
    // Some network folders know no locks; there nothing is ever cleaned.
    while (flock(file, LOCK_EX) != 0 && errno == EINTR) continue;
}

}  // namespace

void TransientName::Set(const std::string& name) {
    assert(name.empty() || IsTemporaryName(name));
    if (!name_.empty()) unlinkat(folder_, name_.c_str(), 0);
    name_ = name;
}

result CreateTemporary(int folder, mode_t mode, FileDescriptor& file, TransientName& name) {
    for (;;) {
        const std::string candidate = NextName();
        file = FileDescriptor(openat(folder, candidate.c_str(),
                                     O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
        if (!file.IsOpen() && errno == EEXIST) continue;
        if (!file.IsOpen()) return ResultOfErrno(errno);
        name.Set(candidate);
        LockExclusively(file.Get());
        struct stat status;
        if (fstat(file.Get(), &status) != 0) return ResultOfErrno(errno);
        // A cleaner that came between the creation and the lock has taken it for a stale one.
        if (status.st_nlink > 0) return result::kSuccess;
    }
}

bool IsTemporaryName(const std::string& name) {
    if (name.size() < kPrefix.size() + kSuffix.size()) return false;
    if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix)) return false;
    std::string_view numbers(name);
    numbers.remove_prefix(kPrefix.size());
    numbers.remove_suffix(kSuffix.size());
    const auto dash = numbers.find('-');
    return dash != std::string_view::npos && dash > 0 && dash + 1 < numbers.size() &&
           numbers.find_first_not_of("0123456789-") == std::string_view::npos;
}

void RemoveIfStale(int folder, const std::string& name) {
    assert(IsTemporaryName(name));
    const FileDescriptor file(
        openat(folder, name.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (file.IsOpen() && flock(file.Get(), LOCK_EX | LOCK_NB) == 0) {
        unlinkat(folder, name.c_str(), 0);
    }
}

}  // namespace Osp::Io
