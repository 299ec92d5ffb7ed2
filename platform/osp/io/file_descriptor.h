// An open file that closes itself.
#pragma once

#include <unistd.h>
#include <utility>

namespace Osp::Io {

class FileDescriptor {
  public:
    FileDescriptor() = default;
    /// Owns `descriptor`; negative is none.
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~FileDescriptor() {
        if (IsOpen()) close(descriptor_);
    }

    bool IsOpen() const { return descriptor_ >= 0; }
    int Get() const { return descriptor_; }
    /// The caller owns it from here on.
    int Release() { return std::exchange(descriptor_, -1); }

  private:
    int descriptor_ = -1;
};

}  // namespace Osp::Io
