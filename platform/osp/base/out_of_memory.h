// Running out of memory as a result.
#pragma once

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <new>

#include <osp/base/result.h>

namespace Osp::Base {

/// Says on standard error what running out of memory has led to; not again what it said last, which
/// may happen with every frame. `consequence` lives for ever. Any thread.
inline void TellOutOfMemory(const char* consequence) {
    static std::atomic<const char*> said = nullptr;
    if (said.exchange(consequence) == consequence) return;
    std::fprintf(stderr, "%s: out of memory: %s\n", program_invocation_short_name, consequence);
}

/// What `step` returns, or kOutOfMemory, which is told, when it throws for want of memory. Platform
/// operations that take memory of picture size stand in this, so that nothing is thrown through the
/// application.
template <class Step>
result OrOutOfMemory(const Step& step) {
    try {
        return step();
    } catch (const std::bad_alloc&) {
        TellOutOfMemory("an operation on a picture failed");
        return result::kOutOfMemory;
    }
}

}  // namespace Osp::Base
