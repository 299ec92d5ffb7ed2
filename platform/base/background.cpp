#include "base/background.h"

#include <algorithm>
#include <glib.h>
#include <memory>
#include <thread>
#include <utility>

#include "base/event_loop.h"

namespace Osp::Base {

namespace {

struct Work {
    EventLoop& loop;
    std::function<void()> job;
    std::function<void()> completion;
};

void Finish(Work& work) {
    work.job();
    work.job = nullptr;  // what it holds goes before the loop hears of it
    work.loop.Post(EventClass::kSystem,
                   [&loop = work.loop, completion = std::move(work.completion)] {
                       loop.EndWork();
                       completion();
                   });
}

}  // namespace

Workers::Workers() {
    const auto run = [](gpointer data, gpointer workers) {
        const std::unique_ptr<Work> work(static_cast<Work*>(data));
        if (!static_cast<Workers*>(workers)->isEnding_) Finish(*work);
    };
    const auto threads = static_cast<gint>(std::max(2U, std::thread::hardware_concurrency()));
    pool_ = g_thread_pool_new(run, this, threads, FALSE, nullptr);
}

Workers::~Workers() {
    // Not left to the pool, which would lose the jobs that wait.
    isEnding_ = true;
    constexpr gboolean kDropWaiting = FALSE;
    constexpr gboolean kAwaitRunning = TRUE;
    g_thread_pool_free(pool_, kDropWaiting, kAwaitRunning);
}

void Workers::Run(EventLoop& loop, std::function<void()> job, std::function<void()> completion) {
    loop.BeginWork();
    std::unique_ptr<Work> work(new Work{loop, std::move(job), std::move(completion)});
    g_thread_pool_push(pool_, work.release(), nullptr);
}

void RunInBackground(std::function<void()> job, std::function<void()> completion) {
    EventLoop& loop = EventLoop::Current();
    loop.GetWorkers().Run(loop, std::move(job), std::move(completion));
}

}  // namespace Osp::Base
