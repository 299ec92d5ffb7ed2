// Receives the expiry of timers.
#pragma once

namespace Osp::Base::Runtime {

class Timer;

class ITimerEventListener {
  public:
    virtual ~ITimerEventListener() = default;
    /// Called from the loop. The timer is idle and may be started again or deleted here.
    virtual void OnTimerExpired(Timer& timer) = 0;
};

}  // namespace Osp::Base::Runtime
