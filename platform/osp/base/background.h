// Work off the loop thread.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace Osp::Base {

class EventLoop;

/// Runs `job` on a worker thread and then `completion` on the loop, always and as a system event.
/// The loop counts the work as under way in between, so a virtual clock stands still meanwhile.
/// A job that runs out of memory is given up and completed all the same: the completion takes what
/// the job has not set for a failure. Jobs run in no particular order, a few at a time, but under a
/// virtual clock they are completed in the order of these calls. A loop that ends waits for the
/// jobs that run and drops the others. Loop thread only.
void RunInBackground(std::function<void()> job, std::function<void()> completion);

/// The threads of one loop, started when there is work for them. The standard library's own, so
/// that the thread sanitizer sees what they share.
class Workers {
  public:
    explicit Workers(EventLoop& loop) : loop_(loop) {}
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    void Run(std::function<void()> job, std::function<void()> completion);

  private:
    struct Work {
        std::uint64_t number;  // the loop's
        std::function<void()> job;
        std::function<void()> completion;
    };

    void StartThread();
    void Serve();
    void DoFirst(std::unique_lock<std::mutex>& lock);
    void Do(Work work);

    EventLoop& loop_;
    std::vector<std::thread> threads_;  // the loop thread's

    std::mutex mutex_;  // guards what follows
    std::condition_variable wake_;
    std::deque<Work> waiting_;
    std::size_t idleThreads_ = 0;
    bool isEnding_ = false;
};

}  // namespace Osp::Base
