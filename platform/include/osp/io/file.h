// Reading a file.
#pragma once

#include <span>

#include <osp/base/byte_buffer.h>
#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/io/file_attributes.h>

namespace Osp::Io {

/// Paths are virtual ("/Res/...", "/Media/Images/...", "/Storagecard/..."). Every operation that
/// takes one gives kInvalidArgument for a path that is not absolute or has a ".." in it,
/// kFileNotFound for one where nothing is (a memory card that is not there included) and
/// kPermissionDenied or kIo as the storage says. Loop thread only.
class File : public Base::Object {
  public:
    File() = default;
    ~File() override;
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// Opens the file at `path` for reading from its beginning. `mode` is "r", anything else is
    /// kInvalidArgument; kInvalidState when constructed already; also the codes above. A failure
    /// leaves the object unconstructed.
    result Construct(const Base::String& path, const Base::String& mode);

    /// Reads on into `bytes`: as much as fits, and less only where the file ends. `readBytes` is
    /// what was read. kEndOfFile when that is nothing because the file has ended; kInvalidState
    /// before Construct; kIo, with `readBytes` 0.
    result Read(std::span<Base::byte> bytes, int& readBytes);

    /// Reads on into what remains of `buffer`, whose position moves behind what was read. Codes as
    /// above.
    result Read(Base::ByteBuffer& buffer);

    /// Leaves `attributes` alone on a failure.
    static result GetAttributes(const Base::String& path, FileAttributes& attributes);

  private:
    int descriptor_ = -1;  // owned
};

}  // namespace Osp::Io
