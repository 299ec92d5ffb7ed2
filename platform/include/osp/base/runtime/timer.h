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

    /// `listener` is not owned and outlives the timer. kInvalidState when constructed already.
    result Construct(ITimerEventListener& listener);
    /// Expires `timeoutMs` from now, never from inside this call. kInvalidState when it runs
    /// already and before Construct, kInvalidArgument when `timeoutMs` is negative.
    result Start(int timeoutMs);
    /// Does nothing when it does not run. Always succeeds.
    result Cancel();

  private:
    ITimerEventListener* listener_ = nullptr;  // not owned
    std::uint64_t id_ = 0;                     // of the running loop timer, 0 when idle
};

}  // namespace Osp::Base::Runtime
