// Work off the loop thread whose order matters.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace Osp::Base {

/// One thread of its own, for what talks to a device: each job begins when the one before it has
/// ended. The end of the worker waits until everything posted has been done.
class SerialWorker {
  public:
    SerialWorker() : thread_([this] { Serve(); }) {}
    ~SerialWorker();
    SerialWorker(const SerialWorker&) = delete;
    SerialWorker& operator=(const SerialWorker&) = delete;

    /// Any thread.
    void Post(std::function<void()> job);

  private:
    void Serve();

    std::mutex mutex_;  // guards what follows
    std::condition_variable wake_;
    std::deque<std::function<void()>> waiting_;
    bool isEnding_ = false;

    std::thread thread_;  // last: it uses the others
};

}  // namespace Osp::Base
