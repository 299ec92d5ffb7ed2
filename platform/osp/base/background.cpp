#include "osp/base/background.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "osp/base/event_loop.h"
#include "osp/base/out_of_memory.h"

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
    if (isShortOfThreads && threads_.size() < MostThreads()) StartThread();
    wake_.notify_one();
}

// The threads that there are do the work of one that cannot be started. Without any, this one does.
void Workers::StartThread() {
    try {
        threads_.emplace_back([this] { Serve(); });
    } catch (const std::exception&) {
        if (!threads_.empty()) return;
        std::unique_lock lock(mutex_);
        DoFirst(lock);
    }
}

void Workers::Serve() {
    std::unique_lock lock(mutex_);
    for (;;) {
        ++idleThreads_;
        wake_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        --idleThreads_;
        if (isEnding_) return;
        DoFirst(lock);
    }
}

void Workers::DoFirst(std::unique_lock<std::mutex>& lock) {
    Work work = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    Do(std::move(work));
    lock.lock();
}

void Workers::Do(Work work) {
    try {
        work.job();
    } catch (const std::bad_alloc&) {
        TellOutOfMemory("a piece of work was given up");
    }
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
