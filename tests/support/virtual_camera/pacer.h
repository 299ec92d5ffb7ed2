// When frames are taken and when they are handed over.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>

#include "tests/support/virtual_camera/behaviour.h"

struct pw_loop;
struct spa_source;

namespace Osp::Testing {

struct TakenFrame {
    unsigned number;
    std::int64_t timeNs;  // monotonic
};

/// Takes frames at a rate, also those that stalls swallow, so that their numbers show the gap.
class Pacer {
  public:
    using Deliver = std::function<void(const TakenFrame&)>;

    /// The loop, the behaviour and the number of the last frame outlive it.
    Pacer(pw_loop* loop, const Behaviour& behaviour, unsigned& lastNumber, Deliver deliver);
    ~Pacer();
    Pacer(const Pacer&) = delete;
    Pacer& operator=(const Pacer&) = delete;

    void Start(int rate);
    void Stop();

  private:
    void Take();
    void Release();
    void Arm(spa_source* timer, std::int64_t timeNs);

    pw_loop* loop_;
    const Behaviour& behaviour_;
    unsigned& lastNumber_;
    Deliver deliver_;
    int rate_ = 0;
    std::int64_t nextNs_ = 0;
    std::deque<TakenFrame> held_;
    spa_source* takeTimer_;
    spa_source* releaseTimer_;
};

}  // namespace Osp::Testing
