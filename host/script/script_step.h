// The parts that a script command is made of.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <variant>

#include "host/outcome.h"
#include "osp/base/clock.h"

namespace Host {

/// Done at once.
struct ActionStep {
    std::function<Outcome<>()> run;
};
/// Lets time pass.
struct WaitStep {
    Osp::Base::Duration duration;
};
/// Lets time pass until `isSo`; fails with what `failure` says when it is not so in time.
struct AwaitStep {
    std::function<bool()> isSo;
    Osp::Base::Duration limit;
    std::function<std::string()> failure;
};

using Step = std::variant<ActionStep, WaitStep, AwaitStep>;
using Steps = std::deque<Step>;

}  // namespace Host
