#include "host/script/script_queue.h"

#include <utility>

namespace Host {

void ScriptQueue::SetWake(std::function<void()> wake) {
    const std::lock_guard lock(mutex_);
    wake_ = std::move(wake);
}

void ScriptQueue::Add(ScriptLine line) {
    const std::lock_guard lock(mutex_);
    lines_.push_back(std::move(line));
    if (wake_) wake_();
}

void ScriptQueue::Close() {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    if (wake_) wake_();
}

std::optional<ScriptLine> ScriptQueue::Take() {
    const std::lock_guard lock(mutex_);
    if (lines_.empty()) return std::nullopt;
    ScriptLine line = std::move(lines_.front());
    lines_.pop_front();
    return line;
}

bool ScriptQueue::IsAtEnd() const {
    const std::lock_guard lock(mutex_);
    return isClosed_ && lines_.empty();
}

}  // namespace Host
