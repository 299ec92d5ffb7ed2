#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include <osp/io/file.h>

#include "osp/io/errno_result.h"
#include "osp/io/file_descriptor.h"
#include "osp/io/storage_map.h"

namespace Osp::Io {

namespace {
constexpr long long kMsPerSecond = 1000;
constexpr long long kNsPerMs = 1'000'000;
}  // namespace

File::~File() {
    if (descriptor_ >= 0) close(descriptor_);
}

result File::Construct(const Base::String& path, const Base::String& mode) {
    if (descriptor_ >= 0) return result::kInvalidState;
    if (mode != Base::String("r")) return result::kInvalidArgument;
    std::string realPath;
    const result r = StorageMap::Current().Resolve(path, Access::kRead, realPath);
    if (Failed(r)) return r;
    // Not blocking: a pipe under this name would wait for its writer.
    FileDescriptor opened(open(realPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!opened.IsOpen()) return ResultOfErrno(errno);
    struct stat status;
    if (fstat(opened.Get(), &status) != 0) return ResultOfErrno(errno);
    if (!S_ISREG(status.st_mode)) return result::kFileNotFound;
    descriptor_ = opened.Release();
    return result::kSuccess;
}

result File::Read(std::span<Base::byte> bytes, int& readBytes) {
    readBytes = 0;
    if (descriptor_ < 0) return result::kInvalidState;
    std::size_t total = 0;
    while (total < bytes.size()) {
        const ssize_t count = read(descriptor_, bytes.data() + total, bytes.size() - total);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return ResultOfErrno(errno);
        if (count == 0) break;
        total += static_cast<std::size_t>(count);
    }
    readBytes = static_cast<int>(total);
    return total == 0 && !bytes.empty() ? result::kEndOfFile : result::kSuccess;
}

result File::Read(Base::ByteBuffer& buffer) {
    int readBytes = 0;
    const result r = Read(buffer.Remaining(), readBytes);
    if (Failed(r)) return r;
    return buffer.SetPosition(buffer.GetPosition() + readBytes);
}

result File::GetAttributes(const Base::String& path, FileAttributes& attributes) {
    std::string realPath;
    const result r = StorageMap::Current().Resolve(path, Access::kRead, realPath);
    if (Failed(r)) return r;
    struct stat status;
    if (stat(realPath.c_str(), &status) != 0) return ResultOfErrno(errno);
    attributes = FileAttributes(
        status.st_size, status.st_mtim.tv_sec * kMsPerSecond + status.st_mtim.tv_nsec / kNsPerMs);
    return result::kSuccess;
}

}  // namespace Osp::Io
