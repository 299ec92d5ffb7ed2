// One sender of events to the loop, whose undelivered events can be dropped.
#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include "osp/base/event_loop.h"

namespace Osp::Base {

/// Posts tasks to the loop on behalf of one object. Dropping, or destroying the source, takes back
/// everything that has been posted and not yet run. Drop and destruction on the loop thread; Post
/// on any thread for as long as the source lives.
class EventSource {
  public:
    explicit EventSource(EventClass eventClass = EventClass::kApplication)
        : loop_(EventLoop::Current()), eventClass_(eventClass) {}
    ~EventSource() { Drop(); }
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;

    /// Runs `task` from the loop unless it is dropped before.
    void Post(EventLoop::Task task);
    void Drop();

    /// The same through a handle that outlives the source: posts nothing once it has been dropped.
    std::function<void(EventLoop::Task)> Poster();

  private:
    EventLoop& loop_;
    EventClass eventClass_;
    std::shared_ptr<std::atomic<unsigned>> generation_ = std::make_shared<std::atomic<unsigned>>(0);
};

}  // namespace Osp::Base
