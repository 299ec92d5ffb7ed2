#include "osp/base/serial_worker.h"

#include <utility>

namespace Osp::Base {

SerialWorker::~SerialWorker() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void SerialWorker::Post(std::function<void()> job) {
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(job));
    }
    wake_.notify_one();
}

void SerialWorker::Serve() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        // What a job holds on to ends before the next one begins, and not under the lock.
        std::function<void()> job = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
    }
}

}  // namespace Osp::Base
