#include "effects/pixels/vector_level.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace Kivo::Effects {

namespace {

constexpr std::array kLevels{VectorLevel::kBaseline, VectorLevel::kV3, VectorLevel::kV4};
constexpr std::array<std::string_view, 3> kNames{"baseline", "v3", "v4"};
static_assert(kLevels.size() == kNames.size());

VectorLevel BestOfProcessor() {
#if defined(__x86_64__)
    __builtin_cpu_init();
    // The rest of these levels comes with every processor that has these; clang knows neither the
    // rest nor the levels by name.
    const bool v3 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
                    __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
    const bool v4 = v3 && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                    __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512dq") &&
                    __builtin_cpu_supports("avx512vl");
    if (v4) return VectorLevel::kV4;
    if (v3) return VectorLevel::kV3;
#endif
    return VectorLevel::kBaseline;
}

VectorLevel Initial() {
    const VectorLevel best = BestOfProcessor();
    const char* const wanted = std::getenv("KIVO_VECTOR_LEVEL");
    if (wanted == nullptr) return best;
    const auto* const found = std::find(kNames.begin(), kNames.end(), std::string_view(wanted));
    if (found == kNames.end()) return best;
    return std::min(best, kLevels[static_cast<std::size_t>(found - kNames.begin())]);
}

std::atomic<VectorLevel>& Level() {
    static std::atomic<VectorLevel> level{Initial()};
    return level;
}

}  // namespace

std::span<const VectorLevel> SupportedVectorLevels() {
    return std::span(kLevels).first(static_cast<std::size_t>(BestOfProcessor()) + 1);
}

VectorLevel CurrentVectorLevel() {
    return Level().load(std::memory_order_relaxed);
}

void ForceVectorLevel(VectorLevel level) {
    Level().store(level, std::memory_order_relaxed);
}

bool CanShuffleBytes() {
#if defined(__x86_64__)
    return CurrentVectorLevel() != VectorLevel::kBaseline;
#else
    return true;
#endif
}

}  // namespace Kivo::Effects
