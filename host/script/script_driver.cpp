#include "host/script/script_driver.h"

#include <algorithm>
#include <cassert>
#include <utility>

// Who moves time. The loop asks its driver only when no event is left, so whatever a command has
// caused has come to its end, workers' answers included, before the next command is looked at.
// Under the virtual clock nothing but a waiting step moves time: to the next timer or to the step's
// own end, whichever is sooner, so that no timer is ever late and a script gives the same result on
// a machine of any speed. Under the real clock time moves by itself, and an alarm makes the loop
// ask again when the step's time is over.
//
// A step may run the loop, as a message box does, and so be followed by later steps before it
// returns. Hence a step is taken off the list before it is run, and nothing is kept across its run
// that the nested driver may have changed.

namespace Host {

using Osp::Base::TimePoint;

namespace {

std::string Quoted(const std::string& line) {
    constexpr std::size_t kBytes = 80;
    return line.size() <= kBytes ? line : line.substr(0, kBytes) + " ...";
}

}  // namespace

ScriptDriver::ScriptDriver(Osp::Base::EventLoop& loop, Osp::Base::VirtualClock* clock,
                           ScriptQueue& queue, CommandContext context,
                           std::function<void(const Outcome<>&)> finished)
    : loop_(loop), clock_(clock), queue_(queue), context_(context), finished_(std::move(finished)) {
    queue_.SetWake([&loop] { loop.Wake(); });
    loop_.SetDriver(this);
}

ScriptDriver::~ScriptDriver() {
    queue_.SetWake(nullptr);
    loop_.SetDriver(nullptr);
    loop_.CancelTimer(alarm_);
}

bool ScriptDriver::OnIdle() {
    if (steps_.empty()) return NextLine();
    // A step may run the loop, and so this driver, again: it works on a copy.
    const Step step = steps_.front();
    return std::visit([this](const auto& s) { return RunStep(s); }, step);
}

bool ScriptDriver::NextLine() {
    if (line_) LineDone(kDone);
    line_ = queue_.Take();
    if (!line_) {
        if (queue_.IsAtEnd()) Finish(kDone);
        return false;
    }
    steps_ = ParseCommand(line_->text, context_);
    return true;
}

bool ScriptDriver::RunStep(const ActionStep& step) {
    StepDone();
    const Outcome<> outcome = step.run();
    if (!outcome) LineDone(outcome);
    return true;
}

bool ScriptDriver::RunStep(const WaitStep& step) {
    if (!stepStart_) stepStart_ = loop_.GetClock().Now();
    const TimePoint end = *stepStart_ + step.duration;
    if (loop_.GetClock().Now() < end) return PassTime(end);
    StepDone();
    return true;
}

bool ScriptDriver::RunStep(const AwaitStep& step) {
    if (!stepStart_) stepStart_ = loop_.GetClock().Now();
    if (step.isSo()) {
        StepDone();
        return true;
    }
    const TimePoint end = *stepStart_ + step.limit;
    if (loop_.GetClock().Now() < end) return PassTime(end);
    StepDone();
    LineDone(Failure{step.failure()});
    return true;
}

bool ScriptDriver::PassTime(TimePoint limit) {
    if (clock_ != nullptr) {
        clock_->AdvanceTo(std::min(loop_.NextDue().value_or(limit), limit));
        return true;
    }
    // The loop asks again after every event, and at the latest when the step's time is over.
    if (alarm_ == 0) {
        alarm_ = loop_.StartTimer(Osp::Base::EventClass::kSystem, limit - loop_.GetClock().Now(),
                                  [this] { alarm_ = 0; });
    }
    return false;
}

void ScriptDriver::StepDone() {
    assert(!steps_.empty());
    steps_.pop_front();
    stepStart_.reset();
    loop_.CancelTimer(std::exchange(alarm_, 0));
}

void ScriptDriver::LineDone(const Outcome<>& outcome) {
    assert(line_);
    const ScriptLine line = *std::exchange(line_, std::nullopt);
    steps_.clear();
    if (line.done) {
        line.done(outcome);
    } else if (!outcome) {
        Finish(Failure{"line " + std::to_string(line.number) + ": " + Quoted(line.text) + ": " +
                       outcome.Why().message});
    }
}

void ScriptDriver::Finish(const Outcome<>& outcome) {
    if (finished_) std::exchange(finished_, nullptr)(outcome);
}

}  // namespace Host
