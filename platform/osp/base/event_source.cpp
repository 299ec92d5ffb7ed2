// Every event is posted with the generation that its source then has, and runs only while the
// source still has it. So a drop is one addition, and it also reaches the events that another
// thread is just posting. Only the loop thread drops and only the loop thread runs events: between
// the check and the task nothing can be dropped. Events share the counter with the source, because
// they outlive it in the loop's queue.
#include "osp/base/event_source.h"

#include <cassert>
#include <utility>

namespace Osp::Base {

void EventSource::Post(EventLoop::Task task) {
    Poster()(std::move(task));
}

void EventSource::Drop() {
    assert(loop_.IsLoopThread());
    generation_->fetch_add(1);
}

// The generation is that of now, not of the posting: a handle of before a drop stays silent.
std::function<void(EventLoop::Task)> EventSource::Poster() {
    return [&loop = loop_, eventClass = eventClass_, generation = generation_,
            posted = generation_->load()](EventLoop::Task task) {
        loop.Post(eventClass, [generation, posted, task = std::move(task)] {
            if (generation->load() == posted) task();
        });
    };
}

}  // namespace Osp::Base
