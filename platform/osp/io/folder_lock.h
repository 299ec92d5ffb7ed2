// One process at a time in a folder.
#pragma once

#include <string>

#include <osp/base/result.h>

#include "osp/io/file_descriptor.h"

namespace Osp::Io {

/// A lock on the folder itself, so that nothing has to be written for it: it works on a full or
/// read-only disk, leaves nothing behind, and goes with the process, however that ends. Programs
/// that the process starts do not inherit it.
class FolderLock {
  public:
    /// Locks the folder at the real path `folder` for the life of this object, once; kDeviceBusy
    /// when somebody else has it. A folder that cannot be opened or knows no locks counts as free.
    result Acquire(const std::string& folder);

  private:
    FileDescriptor folder_;
};

}  // namespace Osp::Io
