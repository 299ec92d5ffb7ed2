// A one-shot timer.
#pragma once

#include <cstdint>

#include <osp/base/result.h>
#include <osp/base/runtime/i_timer_event_listener.h>

namespace Osp::Base::Runtime {

/// Expires once for every Start. Loop thread only. Deleting or cancelling it drops an expiry that
/// has not been delivered yet.
class Timer {
  public:
    Timer() = default;
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// `listener` is not owned and outlives the timer.
    result Construct(ITimerEventListener& listener);
    /// Expires `timeoutMs` from now. kInvalidState when it runs already, kInvalidArgument when
    /// `timeoutMs` is negative.
    result Start(int timeoutMs);
    /// Does nothing when it does not run.
    result Cancel();

  private:
    ITimerEventListener* listener_ = nullptr;  // not owned
    std::uint64_t id_ = 0;                     // of the running loop timer, 0 when idle
};

}  // namespace Osp::Base::Runtime
