#include "tests/support/virtual_camera/pacer.h"

#include <algorithm>
#include <ctime>
#include <pipewire/pipewire.h>
#include <utility>

namespace Osp::Testing {

namespace {

constexpr std::int64_t kSecondNs = 1'000'000'000;
constexpr std::int64_t kMillisecondNs = 1'000'000;
// A burst is this close; buffers on top of each other would only replace one another on the way.
constexpr std::int64_t kBurstGapNs = 2 * kMillisecondNs;
// A camera that may not deliver has soon no place for another frame.
constexpr std::size_t kMostHeld = 4;

std::int64_t NowNs() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * kSecondNs + now.tv_nsec;
}

}  // namespace

Pacer::Pacer(pw_loop* loop, const Behaviour& behaviour, unsigned& lastNumber, Deliver deliver)
    : loop_(loop),
      behaviour_(behaviour),
      lastNumber_(lastNumber),
      deliver_(std::move(deliver)),
      takeTimer_(pw_loop_add_timer(
          loop, [](void* pacer, std::uint64_t) { static_cast<Pacer*>(pacer)->Take(); }, this)),
      releaseTimer_(pw_loop_add_timer(
          loop, [](void* pacer, std::uint64_t) { static_cast<Pacer*>(pacer)->Release(); }, this)) {}

Pacer::~Pacer() {
    pw_loop_destroy_source(loop_, takeTimer_);
    pw_loop_destroy_source(loop_, releaseTimer_);
}

void Pacer::Start(int rate) {
    rate_ = rate;
    nextNs_ = NowNs();
    Arm(takeTimer_, nextNs_);
}

void Pacer::Stop() {
    pw_loop_update_timer(loop_, takeTimer_, nullptr, nullptr, false);
    pw_loop_update_timer(loop_, releaseTimer_, nullptr, nullptr, false);
    held_.clear();
}

void Pacer::Arm(spa_source* timer, std::int64_t timeNs) {
    timespec time{timeNs / kSecondNs, timeNs % kSecondNs};
    pw_loop_update_timer(loop_, timer, &time, nullptr, true);
}

void Pacer::Take() {
    const std::int64_t now = NowNs();
    const int rate = behaviour_.rate > 0 ? behaviour_.rate : rate_;
    // Frames that a busy machine has missed are not made up for.
    nextNs_ = std::max(nextNs_, now - kSecondNs / rate) + kSecondNs / rate;
    Arm(takeTimer_, nextNs_);
    ++lastNumber_;
    if (held_.size() < kMostHeld) held_.push_back({lastNumber_, now});
    if (behaviour_.isStalled) {
        held_.clear();
    } else if (now - held_.front().timeNs >= behaviour_.lateMs * kMillisecondNs) {
        Release();
    }
}

void Pacer::Release() {
    if (held_.empty()) return;
    const TakenFrame frame = held_.front();
    held_.pop_front();
    deliver_(frame);
    if (!held_.empty()) Arm(releaseTimer_, NowNs() + kBurstGapNs);
}

}  // namespace Osp::Testing
