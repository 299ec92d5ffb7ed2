#include <chrono>

#include <osp/base/runtime/timer.h>

#include "osp/base/event_loop.h"

namespace Osp::Base::Runtime {

Timer::~Timer() {
    (void)Cancel();
}

result Timer::Construct(ITimerEventListener& listener) {
    if (listener_ != nullptr) return result::kInvalidState;
    listener_ = &listener;
    return result::kSuccess;
}

result Timer::Start(int timeoutMs) {
    if (listener_ == nullptr || id_ != 0) return result::kInvalidState;
    if (timeoutMs < 0) return result::kInvalidArgument;
    id_ = EventLoop::Current().StartTimer(EventClass::kApplication,
                                          std::chrono::milliseconds(timeoutMs), [this] {
                                              id_ = 0;  // first: the listener may start or delete
                                              listener_->OnTimerExpired(*this);
                                          });
    return result::kSuccess;
}

result Timer::Cancel() {
    if (id_ != 0) EventLoop::Current().CancelTimer(id_);
    id_ = 0;
    return result::kSuccess;
}

}  // namespace Osp::Base::Runtime
