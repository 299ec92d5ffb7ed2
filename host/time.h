// The clock, the loop and the chance on which everything else stands.
#pragma once

#include <memory>

#include "host/options.h"
#include "osp/base/clock.h"
#include "osp/base/event_loop.h"
#include "osp/base/randomness.h"

namespace Host {

/// The thread that makes it is the loop thread. One at a time in a process.
struct Time {
    explicit Time(ClockKind kind)
        : clock(kind == ClockKind::kVirtual
                    ? std::unique_ptr<Osp::Base::Clock>(new Osp::Base::VirtualClock)
                    : std::make_unique<Osp::Base::RealClock>()),
          loop(*clock),
          installed(loop),
          randomness(*clock),
          installedRandomness(randomness) {}

    std::unique_ptr<Osp::Base::Clock> clock;
    Osp::Base::EventLoop loop;
    Osp::Base::EventLoop::Installed installed;
    Osp::Base::Randomness randomness;
    Osp::Base::Randomness::Installed installedRandomness;
};

}  // namespace Host
