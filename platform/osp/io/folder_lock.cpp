// Only a lock that somebody else holds keeps this process out. Everything else that can go wrong
// (no such folder, a file system without locks) is taken for free, deliberately: the lock protects
// against two cameras on one folder, and a camera that cannot find out should take photographs.
#include "osp/io/folder_lock.h"

#include <cassert>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace Osp::Io {

result FolderLock::Acquire(const std::string& folder) {
    assert(!folder_.IsOpen());
    folder_ = FileDescriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder_.IsOpen()) return result::kSuccess;
    while (flock(folder_.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK) return result::kDeviceBusy;
        if (errno != EINTR) return result::kSuccess;
    }
    return result::kSuccess;
}

}  // namespace Osp::Io
