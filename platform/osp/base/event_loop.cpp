// One source in GLib's default context carries every event of the platform. What holds, and why:
//
// - One event an iteration. The other sources of the context (the window, D-Bus) get their turn
//   between any two, and RunUntil asks `done` after each.
// - Posted events come before timers, both in their order: what has happened is told before what
//   merely falls due at the same moment. The order is one for both classes, in one queue. While
//   application events are held back (holdDepth_ > 0) they keep their places and system events
//   overtake them; when the hold ends they go on as if nothing had been. The queue is short, so a
//   search from its front is enough.
// - Nested runs are this same loop once more on the stack: a message box runs it inside the event
//   that showed the box. An outer run looks at its `done` only when the inner one has ended.
// - Events are never taken out of the queue. Whoever may end before they run has them check, when
//   they run, whether they still mean anything: an EventSource by its generation, others by a weak
//   reference. A timer is taken out, because it may lie far ahead.
// - What disposes of itself lives until no event is on the stack (dispatchDepth_ == 0). The end of
//   the innermost event would be too early: an object that is removed inside a message box may be
//   in the middle of the very call that showed it.
// - The driver is asked only when nothing can run and no background work is under way. So a virtual
//   clock never passes the moment at which a piece of work that has begun is to be heard of.
// - Nor does the order in which work is heard of depend on how long it took: under a virtual clock
// a
//   completion waits for those of earlier work, and for all that is ready without it. So a run
//   under it depends on its inputs alone.
#include "osp/base/event_loop.h"

#include <algorithm>
#include <cassert>
#include <glib.h>

#include "osp/base/out_of_memory.h"

namespace Osp::Base {

struct EventLoop::Source {
    GSource base;
    EventLoop* loop;
};

namespace {

// Nested runs leave the flag or depth as they found it, also when a task throws.
class Raised {
  public:
    explicit Raised(int& depth) : depth_(depth) { ++depth_; }
    ~Raised() { --depth_; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

  private:
    int& depth_;
};

}  // namespace

EventLoop::EventLoop(Clock& clock)
    : clock_(clock), context_(g_main_context_ref(g_main_context_default())) {
    static GSourceFuncs functions = {[](GSource* source, gint* timeoutMs) -> gboolean {
                                         EventLoop& loop = *reinterpret_cast<Source*>(source)->loop;
                                         *timeoutMs = -1;
                                         if (loop.HasReady() || loop.DriverMayRun()) return TRUE;
                                         g_source_set_ready_time(source, loop.ReadyTimeUs());
                                         return FALSE;
                                     },
                                     [](GSource* source) -> gboolean {
                                         EventLoop& loop = *reinterpret_cast<Source*>(source)->loop;
                                         return loop.HasReady() || loop.DriverMayRun();
                                     },
                                     [](GSource* source, GSourceFunc, gpointer) -> gboolean {
                                         EventLoop& loop = *reinterpret_cast<Source*>(source)->loop;
                                         g_source_set_ready_time(source, -1);
                                         loop.DispatchOrAsk();
                                         return G_SOURCE_CONTINUE;
                                     },
                                     nullptr,
                                     nullptr,
                                     nullptr};
    source_ = reinterpret_cast<Source*>(g_source_new(&functions, sizeof(Source)));
    source_->loop = this;
    // A message box dispatches from inside a dispatch.
    g_source_set_can_recurse(&source_->base, TRUE);
    g_source_attach(&source_->base, context_);
}

EventLoop::~EventLoop() {
    assert(IsLoopThread() && dispatchDepth_ == 0 && holdDepth_ == 0);
    workers_ = nullptr;  // which post here until they end
    DisposeNow();
    g_source_destroy(&source_->base);
    g_source_unref(&source_->base);
    g_main_context_unref(context_);
}

void EventLoop::Post(EventClass eventClass, Task task) {
    assert(task);
    {
        const std::lock_guard lock(mutex_);
        posted_.push_back({eventClass, std::move(task)});
    }
    g_main_context_wakeup(context_);
}

EventLoop::TimerId EventLoop::StartTimer(EventClass eventClass, Duration delay, Task task) {
    assert(IsLoopThread() && task && delay.count() >= 0);
    const TimerId id = ++lastTimerId_;
    timers_.emplace(clock_.Now() + delay, PendingTimer{id, {eventClass, std::move(task)}});
    return id;
}

void EventLoop::CancelTimer(TimerId id) {
    assert(IsLoopThread());
    const auto found =
        std::ranges::find_if(timers_, [id](const auto& entry) { return entry.second.id == id; });
    if (found != timers_.end()) timers_.erase(found);
}

void EventLoop::RunUntil(const std::function<bool()>& done) {
    assert(IsLoopThread() && done);
    while (!done()) {
        g_main_context_iteration(context_, TRUE);
        if (driverFailure_) std::rethrow_exception(std::exchange(driverFailure_, nullptr));
    }
}

void EventLoop::RunHoldingApplication(const std::function<bool()>& done) {
    const Raised hold(holdDepth_);
    RunUntil(done);
}

void EventLoop::DisposeLater(std::unique_ptr<Disposable> object) {
    assert(IsLoopThread() && object);
    disposals_.push_back(std::move(object));
    if (dispatchDepth_ == 0) DisposeNow();
}

std::uint64_t EventLoop::BeginWork() {
    assert(IsLoopThread());
    return ++begunWork_;
}

void EventLoop::CompleteWork(std::uint64_t number, Task completion) {
    assert(number > 0 && completion);
    Task ending = [this, completion = std::move(completion)] {
        ++endedWork_;
        completion();
    };
    if (!clock_.IsVirtual()) return Post(EventClass::kSystem, std::move(ending));
    {
        const std::lock_guard lock(mutex_);
        completed_.emplace(number, std::move(ending));
    }
    g_main_context_wakeup(context_);
}

bool EventLoop::HasCompletion() const {
    const std::lock_guard lock(mutex_);
    return !completed_.empty() && completed_.begin()->first == endedWork_ + 1;
}

void EventLoop::SetDriver(LoopDriver* driver) {
    assert(IsLoopThread());
    driver_ = driver;
    driverAsleep_ = false;
}

void EventLoop::Wake() {
    {
        const std::lock_guard lock(mutex_);
        woken_ = true;
    }
    g_main_context_wakeup(context_);
}

std::optional<TimePoint> EventLoop::NextDue() const {
    for (const auto& [due, timer] : timers_) {
        if (Runs(timer.event.eventClass)) return due;
    }
    return std::nullopt;
}

bool EventLoop::HasReady() const {
    {
        const std::lock_guard lock(mutex_);
        if (std::ranges::any_of(posted_, [this](const Event& e) { return Runs(e.eventClass); })) {
            return true;
        }
    }
    const auto due = NextDue();
    return (due && *due <= clock_.Now()) || HasCompletion();
}

std::optional<EventLoop::Event> EventLoop::TakeReady() {
    if (auto posted = TakePosted()) return posted;
    if (auto expired = TakeExpired()) return expired;
    return TakeCompletion();
}

std::optional<EventLoop::Event> EventLoop::TakePosted() {
    const std::lock_guard lock(mutex_);
    const auto first =
        std::ranges::find_if(posted_, [this](const Event& e) { return Runs(e.eventClass); });
    if (first == posted_.end()) return std::nullopt;
    Event event = std::move(*first);
    posted_.erase(first);
    return event;
}

std::optional<EventLoop::Event> EventLoop::TakeCompletion() {
    if (!HasCompletion()) return std::nullopt;
    const std::lock_guard lock(mutex_);
    auto first = completed_.extract(completed_.begin());
    return Event{EventClass::kSystem, std::move(first.mapped())};
}

std::optional<EventLoop::Event> EventLoop::TakeExpired() {
    const auto now = clock_.Now();
    for (auto it = timers_.begin(); it != timers_.end() && it->first <= now; ++it) {
        if (!Runs(it->second.event.eventClass)) continue;
        Event event = std::move(it->second.event);
        timers_.erase(it);
        return event;
    }
    return std::nullopt;
}

// Nothing may be thrown through the library that calls. An event that needs more memory than there
// is must not cost the photographs that are still to come; a driver that does would do so again.
void EventLoop::DispatchOrAsk() {
    try {
        if (DispatchOne()) return;
    } catch (const std::bad_alloc&) {
        return TellOutOfMemory("an event was given up");
    }
    try {
        if (DriverMayRun()) AskDriver();
    } catch (const std::bad_alloc&) {
        driverFailure_ = std::current_exception();
    }
}

bool EventLoop::DispatchOne() {
    std::optional<Event> event = TakeReady();
    if (!event) return false;
    driverAsleep_ = false;
    {
        const Raised dispatch(dispatchDepth_);
        event->task();
        event->task = nullptr;  // what the task holds goes before what was disposed of
    }
    if (dispatchDepth_ == 0) DisposeNow();
    return true;
}

bool EventLoop::DriverMayRun() const {
    if (driver_ == nullptr || endedWork_ != begunWork_) return false;
    const std::lock_guard lock(mutex_);
    return !driverAsleep_ || woken_;
}

void EventLoop::AskDriver() {
    {
        const std::lock_guard lock(mutex_);
        woken_ = false;
    }
    // Nested runs may ask it again before this call returns.
    const bool goOn = driver_->OnIdle();
    driverAsleep_ = !goOn;
}

long long EventLoop::ReadyTimeUs() const {
    const auto due = NextDue();
    // A virtual clock moves by its driver, never by waiting.
    if (!due || clock_.IsVirtual()) return -1;
    return g_get_monotonic_time() + std::max<long long>(0, (*due - clock_.Now()).count());
}

void EventLoop::DisposeNow() {
    // A destructor may dispose of more.
    while (!disposals_.empty()) {
        const auto ending = std::exchange(disposals_, {});
    }
}

}  // namespace Osp::Base
