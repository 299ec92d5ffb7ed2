#include "osp/base/clock.h"

#include <algorithm>

namespace Osp::Base {

namespace {
// 2026-01-01 12:00:00 UTC
constexpr long long kVirtualEpochMs = 1767268800000;
}  // namespace

TimePoint RealClock::Now() const {
    return std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now() - start_);
}

long long RealClock::EpochMs() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

long long VirtualClock::EpochMs() const {
    return kVirtualEpochMs + now_.count() / 1000;
}

// A driver may ask for the time of a timer that is overdue: application timers wait during a hold.
void VirtualClock::AdvanceTo(TimePoint time) {
    now_ = std::max(now_, time);
}

}  // namespace Osp::Base
