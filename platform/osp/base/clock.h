// Where the platform's time comes from.
#pragma once

#include <chrono>

namespace Osp::Base {

using Duration = std::chrono::microseconds;
/// Time since the clock was made; never goes back.
using TimePoint = std::chrono::microseconds;

class Clock {
  public:
    virtual ~Clock() = default;
    virtual TimePoint Now() const = 0;
    /// Wall time, in milliseconds since 1970 UTC.
    virtual long long EpochMs() const = 0;
    /// True when time moves only by VirtualClock::AdvanceTo.
    virtual bool IsVirtual() const = 0;
};

class RealClock : public Clock {
  public:
    TimePoint Now() const override;
    long long EpochMs() const override;
    bool IsVirtual() const override { return false; }

  private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// Starts at a fixed wall time, so that what a run leaves behind is a function of its inputs.
class VirtualClock : public Clock {
  public:
    TimePoint Now() const override { return now_; }
    long long EpochMs() const override;
    bool IsVirtual() const override { return true; }
    /// Does nothing when `time` has passed already.
    void AdvanceTo(TimePoint time);

  private:
    TimePoint now_{0};
};

}  // namespace Osp::Base
