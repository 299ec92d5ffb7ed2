// The time of day.
#pragma once

#include <osp/base/result.h>

namespace Osp::System {

class SystemTime {
  public:
    /// Milliseconds since 1970 UTC.
    static result GetTicks(long long& ticks);
};

}  // namespace Osp::System
