#include "osp/io/folder_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace Osp::Io {

result FolderLock::Acquire(const std::string& folder) {
    folder_ = FileDescriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder_.IsOpen()) return result::kSuccess;
    while (flock(folder_.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK) return result::kDeviceBusy;
        if (errno != EINTR) return result::kSuccess;
    }
    return result::kSuccess;
}

}  // namespace Osp::Io
