// Which vector instructions the kernels' loops use.
#pragma once

#include <span>

namespace Kivo::Effects {

/// Every loop is compiled once for each level from the same source, and gives the same bytes at
/// every level. Other architectures than x86-64 have the baseline alone.
enum class VectorLevel { kBaseline, kV3, kV4 };

/// The levels that this processor can run, the baseline first.
std::span<const VectorLevel> SupportedVectorLevels();

/// The best level, unless another one was forced or the environment variable KIVO_VECTOR_LEVEL
/// ("baseline", "v3" or "v4") holds a lower one.
VectorLevel CurrentVectorLevel();

/// For tests and benchmarks; `level` is one of the supported ones.
void ForceVectorLevel(VectorLevel level);

/// Whether the current level can put the bytes of a vector in any order at once.
bool CanShuffleBytes();

}  // namespace Kivo::Effects
