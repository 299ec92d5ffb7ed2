// A folder and what lies in it.
#pragma once

#include <string>

#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/io/dir_enumerator.h>

namespace Osp::Io {

/// Paths are virtual, as those of File. Loop thread only.
class Directory : public Base::Object {
  public:
    /// kFileNotFound when no folder is at `path`, and the codes of File; a failure leaves the
    /// object unconstructed. kInvalidState when constructed already.
    result Construct(const Base::String& path);

    /// A new enumerator over all entries but "." and "..", the caller's. Null when the folder
    /// could not be listed to its end; GetLastResult then tells why (kFileNotFound when it has
    /// vanished, kPermissionDenied, kIo, kInvalidState before Construct).
    DirEnumerator* ReadN();
    /// The outcome of the last ReadN.
    result GetLastResult() const { return lastResult_; }

    /// Whether a folder is at `path`.
    static bool Exists(const Base::String& path);

  private:
    std::string realPath_;  // empty until constructed
    result lastResult_ = result::kSuccess;
};

}  // namespace Osp::Io
