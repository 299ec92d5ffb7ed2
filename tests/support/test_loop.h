// An event loop under the virtual clock, run by the test itself.
#pragma once

#include <algorithm>
#include <chrono>

#include "osp/base/clock.h"
#include "osp/base/event_loop.h"
#include "osp/base/randomness.h"

namespace Osp::Testing {

class TestLoop : private Base::LoopDriver {
  public:
    TestLoop() { loop_.SetDriver(this); }
    ~TestLoop() override { loop_.SetDriver(nullptr); }
    TestLoop(const TestLoop&) = delete;
    TestLoop& operator=(const TestLoop&) = delete;

    Base::EventLoop& Loop() { return loop_; }
    Base::VirtualClock& Clock() { return clock_; }

    /// Dispatches until nothing more is ready.
    void Settle() { Pass(std::chrono::milliseconds(0)); }
    /// Lets time pass, timer by timer.
    void Pass(Base::Duration duration) {
        until_ = clock_.Now() + duration;
        isDone_ = false;
        loop_.Wake();
        loop_.RunUntil([this] { return isDone_; });
    }

  private:
    bool OnIdle() override {
        if (clock_.Now() < until_) {
            clock_.AdvanceTo(std::min(loop_.NextDue().value_or(until_), until_));
            return true;
        }
        isDone_ = true;
        return false;
    }

    Base::VirtualClock clock_;
    Base::EventLoop loop_{clock_};
    Base::EventLoop::Installed installed_{loop_};
    Base::Randomness randomness_{clock_};
    Base::Randomness::Installed installedRandomness_{randomness_};
    Base::TimePoint until_{0};
    bool isDone_ = false;
};

}  // namespace Osp::Testing
