#include "base/background.h"

#include <algorithm>
#include <utility>

#include "base/event_loop.h"

namespace Osp::Base {

namespace {

std::size_t MostThreads() {
    return std::max(2U, std::thread::hardware_concurrency());
}

}  // namespace

Workers::~Workers() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    wake_.notify_all();
    for (std::thread& thread : threads_) thread.join();
}

void Workers::Run(std::function<void()> job, std::function<void()> completion) {
    loop_.BeginWork();
    bool isShortOfThreads = false;
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back({std::move(job), std::move(completion)});
        isShortOfThreads = waiting_.size() > idleThreads_;
    }
    if (isShortOfThreads && threads_.size() < MostThreads()) {
        threads_.emplace_back([this] { Serve(); });
    }
    wake_.notify_one();
}

void Workers::Serve() {
    std::unique_lock lock(mutex_);
    for (;;) {
        ++idleThreads_;
        wake_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        --idleThreads_;
        if (isEnding_) return;
        Work work = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        Do(std::move(work));
        lock.lock();
    }
}

void Workers::Do(Work work) {
    work.job();
    work.job = nullptr;  // what it holds goes before the loop hears of it
    loop_.Post(EventClass::kSystem, [&loop = loop_, completion = std::move(work.completion)] {
        loop.EndWork();
        completion();
    });
}

void RunInBackground(std::function<void()> job, std::function<void()> completion) {
    EventLoop::Current().GetWorkers().Run(std::move(job), std::move(completion));
}

}  // namespace Osp::Base
