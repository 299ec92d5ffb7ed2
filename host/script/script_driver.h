// Runs a script between the events of the loop.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/outcome.h"
#include "host/script/script_commands.h"
#include "host/script/script_queue.h"
#include "host/script/script_step.h"
#include "osp/base/event_loop.h"

namespace Host {

/// Asked by the loop when nothing else can happen, also from inside a message box's wait. Under
/// the virtual clock it is what makes time pass. Loop thread only.
class ScriptDriver : public Osp::Base::LoopDriver {
  public:
    /// Nothing is owned; everything outlives the driver. `clock` is null under the real clock.
    /// `finished` is called once at the end of the script or at its first failure.
    ScriptDriver(Osp::Base::EventLoop& loop, Osp::Base::VirtualClock* clock, ScriptQueue& queue,
                 CommandContext context, std::function<void(const Outcome<>&)> finished);
    ~ScriptDriver() override;

    /// A failing command ends the script, unless it has somebody who wants to know.
    bool OnIdle() override;

  private:
    bool NextLine();
    bool RunStep(const ActionStep& step);
    bool RunStep(const WaitStep& step);
    bool RunStep(const AwaitStep& step);
    bool PassTime(Osp::Base::TimePoint limit);
    void StepDone();
    void LineDone(const Outcome<>& outcome);
    void Finish(const Outcome<>& outcome);

    Osp::Base::EventLoop& loop_;
    Osp::Base::VirtualClock* clock_;
    ScriptQueue& queue_;
    CommandContext context_;
    std::function<void(const Outcome<>&)> finished_;
    std::optional<ScriptLine> line_;
    Steps steps_;
    std::optional<Osp::Base::TimePoint> stepStart_;  // of a step that takes time
    Osp::Base::EventLoop::TimerId alarm_ = 0;        // real clock: the end of the current step
};

}  // namespace Host
