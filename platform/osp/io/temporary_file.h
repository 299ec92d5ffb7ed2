// The files that hold a new content until it is whole.
#pragma once

#include <string>
#include <sys/types.h>

#include <osp/base/result.h>

#include "osp/io/file_descriptor.h"

namespace Osp::Io {

/// A name in a folder that is removed at the end of this object, unless it is to be kept.
class TransientName {
  public:
    /// `folder` is an open folder, not owned.
    explicit TransientName(int folder) : folder_(folder) {}
    ~TransientName() { Set(""); }
    TransientName(const TransientName&) = delete;
    TransientName& operator=(const TransientName&) = delete;

    /// Removes the name held so far.
    void Set(const std::string& name);
    void Keep() { name_.clear(); }
    const std::string& Get() const { return name_; }

  private:
    int folder_;
    std::string name_;
};

/// Creates an empty file under a dot name in the open folder `folder` and opens it for writing. It
/// is locked for as long as it is open, which tells a writer at work from one that was killed.
/// `mode` is less the process's mask. Any thread.
result CreateTemporary(int folder, mode_t mode, FileDescriptor& file, TransientName& name);

/// Whether CreateTemporary makes such names.
bool IsTemporaryName(const std::string& name);

/// Removes the file `name`, a temporary one, from the open folder `folder` unless its writer is
/// still at work.
void RemoveIfStale(int folder, const std::string& name);

}  // namespace Osp::Io
