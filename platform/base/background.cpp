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

void Run(gpointer data, gpointer) {
    std::unique_ptr<Work> work(static_cast<Work*>(data));
    work->job();
    work->job = nullptr;
    EventLoop& loop = work->loop;
    loop.Post(EventClass::kSystem, [&loop, completion = std::move(work->completion)] {
        loop.EndWork();
        completion();
    });
}

GThreadPool* Workers() {
    static GThreadPool* const pool = g_thread_pool_new(
        Run, nullptr, static_cast<gint>(std::max(2U, std::thread::hardware_concurrency())), FALSE,
        nullptr);
    return pool;
}

}  // namespace

void RunInBackground(std::function<void()> job, std::function<void()> completion) {
    EventLoop& loop = EventLoop::Current();
    loop.BeginWork();
    auto work = std::make_unique<Work>(loop, std::move(job), std::move(completion));
    g_thread_pool_push(Workers(), work.release(), nullptr);
}

}  // namespace Osp::Base
