// What holds:
//
// - Every piece of work that Run takes is either done and then completed, or dropped with its loop.
//   Neither want of memory nor want of threads is a third way: the camera would wait for ever for a
//   photograph that is not coming. Anything else that a job throws ends the process; it is a fault.
// - A thread is started only when more work waits than threads are idle. A thread that has been
//   woken counts as idle until it runs, and the work meant for it still waits, so that comparing
//   the two numbers never starts one too few.
// - The mutex guards the queue and is not held while a job runs. The list of threads belongs to the
//   loop thread alone.
// - What a job holds is let go before its completion is posted, which may rely on being the last
//   user.
#include "osp/base/background.h"

#include <algorithm>
#include <cassert>
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
    assert(loop_.IsLoopThread());
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    wake_.notify_all();
    for (std::thread& thread : threads_) thread.join();
}

void Workers::Run(std::function<void()> job, std::function<void()> completion) {
    assert(job && completion);
    const std::uint64_t number = loop_.BeginWork();
    bool isShortOfThreads = false;
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back({number, std::move(job), std::move(completion)});
        isShortOfThreads = waiting_.size() > idleThreads_;
    }
    if (isShortOfThreads && threads_.size() < MostThreads()) StartThread();
    wake_.notify_one();
}

// The threads that there are do the work of one that cannot be started. Without any, this one does:
// deliberately, the loop then stands still for as long as the job takes.
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
    assert(lock.owns_lock() && !waiting_.empty());
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
    loop_.CompleteWork(work.number, std::move(work.completion));
}

void RunInBackground(std::function<void()> job, std::function<void()> completion) {
    EventLoop::Current().GetWorkers().Run(std::move(job), std::move(completion));
}

}  // namespace Osp::Base
