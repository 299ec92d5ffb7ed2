#include "osp/io/regular_file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "osp/io/errno_result.h"
#include "osp/io/file_descriptor.h"

namespace Osp::Io {

result ReadRegularFile(const std::string& path, std::string& content) {
    // A pipe would wait for its writer, and a terminal become this process's own.
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status;
    if (!file.IsOpen() || fstat(file.Get(), &status) != 0) {
        // That of a socket, or of a device that has no driver.
        return errno == ENXIO || errno == ENODEV ? result::kInvalidFormat : ResultOfErrno(errno);
    }
    if (!S_ISREG(status.st_mode)) return result::kInvalidFormat;
    content.resize(static_cast<std::size_t>(status.st_size));
    std::size_t size = 0;
    while (size < content.size()) {
        const ssize_t count = read(file.Get(), content.data() + size, content.size() - size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return ResultOfErrno(errno);
        if (count == 0) break;
        size += static_cast<std::size_t>(count);
    }
    content.resize(size);
    return result::kSuccess;
}

}  // namespace Osp::Io
