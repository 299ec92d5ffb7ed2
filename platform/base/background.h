// Work off the loop thread.
#pragma once

#include <atomic>
#include <functional>

typedef struct _GThreadPool GThreadPool;

namespace Osp::Base {

class EventLoop;

/// Runs `job` on a worker thread and then `completion` on the loop, always and as a system event.
/// The loop counts the work as under way in between, so a virtual clock stands still meanwhile.
/// Jobs run in no particular order, a few at a time. A loop that ends waits for the jobs that run
/// and drops the others. Loop thread only.
void RunInBackground(std::function<void()> job, std::function<void()> completion);

/// The threads of one loop.
class Workers {
  public:
    Workers();
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    void Run(EventLoop& loop, std::function<void()> job, std::function<void()> completion);

  private:
    std::atomic<bool> isEnding_ = false;
    GThreadPool* pool_;
};

}  // namespace Osp::Base
