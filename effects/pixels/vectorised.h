// Runs a kernel's loops with the best vector instructions of the processor.
#pragma once

#include "effects/pixels/vector_level.h"

// A kernel is a struct with a static function Run of plain loops, marked so that it becomes part of
// whatever calls it, and is compiled anew for the instruction set of each caller. This serves where
// function multiversioning by the loader does not: in sanitized builds, in shared libraries, and
// for tests that force each level in one process.
#define KIVO_INLINE [[gnu::always_inline]] static inline

namespace Kivo::Effects {

#if defined(__x86_64__)

template <class Kernel, class... Args>
[[gnu::target("arch=x86-64-v4"), gnu::noinline]] void RunV4(Args... args) {
    Kernel::Run(args...);
}

template <class Kernel, class... Args>
[[gnu::target("arch=x86-64-v3"), gnu::noinline]] void RunV3(Args... args) {
    Kernel::Run(args...);
}

#endif

/// Arguments are passed by value: pointers, numbers and small views.
template <class Kernel, class... Args>
void RunVectorised(Args... args) {
#if defined(__x86_64__)
    const VectorLevel level = CurrentVectorLevel();
    if (level == VectorLevel::kV4) return RunV4<Kernel>(args...);
    if (level == VectorLevel::kV3) return RunV3<Kernel>(args...);
#endif
    Kernel::Run(args...);
}

}  // namespace Kivo::Effects
