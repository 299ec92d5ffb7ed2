// Figures about the running program.
#pragma once

#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Osp::System {

/// Asked of the system anew each time. Loop thread only.
class RuntimeInfo {
  public:
    /// In bytes: "AvailableMemory" (free for the program), "AllocatedMemory" (held by it) and
    /// "MaxAllocatableMemory". kKeyNotFound, leaving `value` alone, for any other key.
    static result GetValue(const Base::String& key, long long& value);
};

}  // namespace Osp::System
