// The time of day.
#pragma once

#include <osp/base/result.h>

namespace Osp::System {

/// Loop thread only.
class SystemTime {
  public:
    /// Milliseconds since 1970 UTC; always succeeds. In a run under a virtual clock, its time.
    static result GetTicks(long long& ticks);
};

}  // namespace Osp::System
