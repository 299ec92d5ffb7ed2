// The order of the steps is what makes the promise of the header true:
//
// 1. The bytes go to a temporary in the same folder, because only within a file system is renaming
//    one step. 2. The temporary is synced, so that no name ever leads to content that is still on
//    its way. 3. Renaming puts it in place. 4. The folder is synced, or the renaming could be
//    undone by a power cut after success was reported.
//
// With kKeepOld the older file first moves aside and the folder is synced in between: the move must
// not be lost while the renaming that follows is kept, or the older picture had no name at all. If
// the new file then cannot take the name, the older one moves back.
//
// Nothing is ever looked up first and done afterwards where somebody else could come in between:
// each step either refuses by itself (RenameNew) or is tried again. The lock on the folder only
// makes writers take turns on file systems where RenameNew has to go the long way.
//
// A failure after step 3 leaves the new file in place, deliberately: the file is whole, and taking
// it back could fail as well.
#include "osp/io/safe_file.h"

#include <cassert>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "osp/base/event_loop.h"
#include "osp/io/errno_result.h"
#include "osp/io/new_name.h"
#include "osp/io/temporary_file.h"

namespace Osp::Io {

namespace {

constexpr int kMostSetAside = 10000;  // so many damaged files are no accident any more

struct Target {
    FileDescriptor folder;
    std::string name;
};

result OpenTarget(const std::string& path, Target& target) {
    const std::filesystem::path whole(path);
    const std::string folder = whole.has_parent_path() ? whole.parent_path().string() : ".";
    target.name = whole.filename().string();
    target.folder = FileDescriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return target.folder.IsOpen() ? result::kSuccess : ResultOfErrno(errno);
}

bool Exists(int folder, const char* name) {
    return faccessat(folder, name, F_OK, AT_SYMLINK_NOFOLLOW) == 0;
}

/// The permissions of the file at `name`, if there is one.
std::optional<mode_t> ModeOf(int folder, const std::string& name) {
    struct stat status;
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
    if (!S_ISREG(status.st_mode)) return std::nullopt;
    return status.st_mode & 0777;
}

result WriteAll(int file, std::span<const Base::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return ResultOfErrno(errno);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return result::kSuccess;
}

/// Content and date onto the disk; that it is full may show only here.
result Sync(int file, std::optional<long long> modifiedMs) {
    if (modifiedMs) {
        const timespec date = {static_cast<time_t>(*modifiedMs / 1000),
                               static_cast<long>(*modifiedMs % 1000 * 1'000'000)};
        const timespec dates[] = {date, date};
        if (futimens(file, dates) != 0) return ResultOfErrno(errno);
    }
    return fsync(file) == 0 ? result::kSuccess : ResultOfErrno(errno);
}

result SyncFolder(int folder) {
    // Some file systems have nothing to sync in a folder and say so with EINVAL.
    return fsync(folder) == 0 || errno == EINVAL ? result::kSuccess : ResultOfErrno(errno);
}

/// Gives the new file a name that is taken: what has it moves aside first. Whoever takes the name
/// in between is moved aside like the first.
result PutInPlaceOfOld(int folder, const char* from, const std::string& to) {
    for (;;) {
        std::string aside;
        result r = MoveAside(folder, to, aside);
        if (r == result::kFileNotFound) r = result::kSuccess;  // somebody else has moved it
        if (Succeeded(r)) r = SyncFolder(folder);
        if (Succeeded(r)) r = RenameNew(folder, from, to.c_str());
        if (r == result::kKeyAlreadyExists) continue;
        if (Failed(r) && !aside.empty()) (void)RenameNew(folder, aside.c_str(), to.c_str());
        return r;
    }
}

/// Until the folder is closed. Some network folders know no locks.
void TakeTurn(int folder) {
    while (flock(folder, LOCK_EX) != 0 && errno == EINTR) continue;
}

result PutInPlace(const Target& target, Replace replace, TransientName& temporary) {
    const int folder = target.folder.Get();
    const char* from = temporary.Get().c_str();
    const char* to = target.name.c_str();
    result r = result::kSuccess;
    if (replace == Replace::kOverwrite) {
        if (renameat(folder, from, folder, to) != 0) r = ResultOfErrno(errno);
    } else {
        TakeTurn(folder);
        r = RenameNew(folder, from, to);
    }
    if (r == result::kKeyAlreadyExists && replace == Replace::kKeepOld) {
        r = PutInPlaceOfOld(folder, from, target.name);
    }
    if (Failed(r)) return r;
    temporary.Keep();
    return SyncFolder(folder);
}

}  // namespace

result WriteFileSafely(const std::string& path, std::span<const Base::byte> bytes,
                       const SafeFileOptions& options) {
    assert((options.mode & ~mode_t{0777}) == 0);
    Target target;
    result r = OpenTarget(path, target);
    if (Failed(r)) return r;
    const int folder = target.folder.Get();
    // Asked early to save the writing; the last step asks again.
    if (options.replace == Replace::kRefuse && Exists(folder, target.name.c_str())) {
        return result::kKeyAlreadyExists;
    }
    std::optional<mode_t> oldMode;
    if (options.replace == Replace::kOverwrite) oldMode = ModeOf(folder, target.name);
    const mode_t mode = oldMode ? *oldMode & options.mode : options.mode;
    FileDescriptor file;
    TransientName temporary(folder);
    r = CreateTemporary(folder, mode, file, temporary);
    // What the mask has taken away. On a card without permissions this may fail.
    if (Succeeded(r) && oldMode) (void)fchmod(file.Get(), mode);
    if (Succeeded(r)) r = WriteAll(file.Get(), bytes);
    if (Succeeded(r)) r = Sync(file.Get(), options.modifiedMs);
    if (Succeeded(r)) r = PutInPlace(target, options.replace, temporary);
    return r;
}

result WriteFileSafely(const std::string& path, std::string_view text,
                       const SafeFileOptions& options) {
    return WriteFileSafely(
        path, std::span(reinterpret_cast<const Base::byte*>(text.data()), text.size()), options);
}

std::optional<long long> NewFileDateMs() {
    if (!Base::EventLoop::IsInstalled()) return std::nullopt;
    const Base::Clock& clock = Base::EventLoop::Current().GetClock();
    return clock.IsVirtual() ? std::optional(clock.EpochMs()) : std::nullopt;
}

void RemoveStaleTemporaries(const std::string& folder) {
    const FileDescriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.IsOpen()) return;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (IsTemporaryName(name)) RemoveIfStale(opened.Get(), name);
    }
}

bool SetAside(const std::string& path) {
    for (int number = 1; number <= kMostSetAside; ++number) {
        const std::string aside = path + ".damaged-" + std::to_string(number);
        const result r = RenameNew(AT_FDCWD, path.c_str(), aside.c_str());
        if (r != result::kKeyAlreadyExists) return Succeeded(r);
    }
    return false;
}

}  // namespace Osp::Io
