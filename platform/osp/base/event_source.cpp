#include "osp/base/event_source.h"

#include <utility>

namespace Osp::Base {

void EventSource::Post(EventLoop::Task task) {
    Poster()(std::move(task));
}

std::function<void(EventLoop::Task)> EventSource::Poster() {
    return [&loop = loop_, eventClass = eventClass_, generation = generation_,
            posted = generation_->load()](EventLoop::Task task) {
        loop.Post(eventClass, [generation, posted, task = std::move(task)] {
            if (generation->load() == posted) task();
        });
    };
}

}  // namespace Osp::Base
