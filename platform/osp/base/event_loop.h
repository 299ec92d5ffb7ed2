// The one loop on which everything of the platform is delivered.
#pragma once

#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "osp/base/background.h"
#include "osp/base/clock.h"
#include "osp/base/object_disposal.h"
#include "osp/base/service.h"

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GLib's
typedef struct _GMainContext GMainContext;
typedef struct _GSource GSource;
// NOLINTEND(bugprone-reserved-identifier)

namespace Osp::Base {

/// Who an event is for. Application events wait while a message box or the presentation of a panel
/// holds the application inside a call; system events (input routing, painting, time-outs of the
/// platform's own) never wait.
enum class EventClass { kApplication, kSystem };

/// Decides what happens when nothing else can: a script or a test under the virtual clock.
class LoopDriver {
  public:
    virtual ~LoopDriver() = default;
    /// Called when no event is ready and no background work is under way. Returns whether it did
    /// something after which the loop should look again; false lets the loop sleep.
    virtual bool OnIdle() = 0;
};

/// Runs posted tasks in the order of posting and timers in the order of their times, one per
/// iteration, between the other sources of the default GMainContext. Loop thread only, except Post.
class EventLoop : public Service<EventLoop> {
  public:
    using Task = std::function<void()>;
    using TimerId = std::uint64_t;  // 0 is no timer

    explicit EventLoop(Clock& clock);
    ~EventLoop();
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    Clock& GetClock() const { return clock_; }
    /// Whether the caller is on the thread that made the loop.
    bool IsLoopThread() const { return std::this_thread::get_id() == thread_; }

    /// Runs `task` from the loop, never from here. Any thread.
    void Post(EventClass eventClass, Task task);
    /// Runs `task` once, `delay` from now; `delay` is not negative.
    TimerId StartTimer(EventClass eventClass, Duration delay, Task task);
    /// Does nothing for an id that has expired or is 0.
    void CancelTimer(TimerId id);

    /// Dispatches until `done` returns true, which is asked after every dispatch. May be nested. An
    /// event that runs out of memory is given up, which is said on standard error; a driver that
    /// does ends this with std::bad_alloc.
    void RunUntil(const std::function<bool()>& done);
    /// The same while application events wait in their queue.
    void RunHoldingApplication(const std::function<bool()>& done);
    bool IsHoldingApplication() const { return holdDepth_ > 0; }

    /// Deletes `object` once no dispatch of this loop is on the stack, so that an object may bring
    /// about its own end.
    void DisposeLater(std::unique_ptr<Disposable> object);

    /// `driver` may be null; it is not owned. It is asked before the loop sleeps the next time.
    void SetDriver(LoopDriver* driver);
    /// Wakes the loop so that the driver is asked again. Any thread.
    void Wake();

    /// The time of the next timer that could run now, for a driver that advances a virtual clock.
    std::optional<TimePoint> NextDue() const;

    /// Background work of which the loop waits for the end before it asks the driver. BeginWork
    /// returns the number by which CompleteWork, on any thread, hands in `completion`, a system
    /// event. Under a virtual clock the completions come in the order of the numbers and after all
    /// else that is ready.
    std::uint64_t BeginWork();
    void CompleteWork(std::uint64_t number, Task completion);
    Workers& GetWorkers() { return *workers_; }

  private:
    struct Event {
        EventClass eventClass;
        Task task;
    };
    struct PendingTimer {
        TimerId id;
        Event event;
    };
    struct Source;

    bool Runs(EventClass eventClass) const {
        return eventClass == EventClass::kSystem || holdDepth_ == 0;
    }
    bool HasCompletion() const;
    std::optional<Event> TakeReady();
    std::optional<Event> TakePosted();
    std::optional<Event> TakeExpired();
    std::optional<Event> TakeCompletion();
    bool HasReady() const;
    void DispatchOrAsk();
    bool DispatchOne();
    bool DriverMayRun() const;
    void AskDriver();
    long long ReadyTimeUs() const;
    void DisposeNow();

    Clock& clock_;
    const std::thread::id thread_ = std::this_thread::get_id();
    GMainContext* context_;
    Source* source_ = nullptr;
    LoopDriver* driver_ = nullptr;
    bool driverAsleep_ = false;
    std::exception_ptr driverFailure_;

    mutable std::mutex mutex_;  // guards posted_, completed_ and woken_
    std::deque<Event> posted_;
    std::map<std::uint64_t, Task> completed_;  // by number of work, under a virtual clock
    bool woken_ = false;

    std::multimap<TimePoint, PendingTimer> timers_;  // equal times keep the order of starting
    TimerId lastTimerId_ = 0;
    int holdDepth_ = 0;
    int dispatchDepth_ = 0;
    std::uint64_t begunWork_ = 0;  // the last number that was given
    std::uint64_t endedWork_ = 0;  // how many have been heard of
    std::unique_ptr<Workers> workers_ = std::make_unique<Workers>(*this);
    std::vector<std::unique_ptr<Disposable>> disposals_;
};

}  // namespace Osp::Base
