// Blurring of one line of samples, and the making of its tables.
#pragma once

#include <cstdint>

#include "effects/blur/gaussian_levels.h"

namespace Kivo::Effects {

/// The level of a line that is graded by the distance from its middle.
inline constexpr int kGradedLevel = -1;
/// Samples at either end of a line that are always blurred at the widest level.
inline constexpr int kEndSamples = 9;

/// Allocates and fills a sampled Gaussian of the given radius, normalised to a sum of 1, and
/// returns its length (odd). The caller owns `*matrix` and deletes it as an array.
int gen_convolve_matrix(float radius, float** matrix);

/// A new table of `length` x 256 products: [i * 256 + v] is matrix[i] * v. The caller owns it and
/// deletes it as an array.
float* gen_lookup_table(const float* matrix, int length);

/// Blurs one line of `length` samples of `bytes` consecutive bytes, every byte of a sample for
/// itself. `level` is 0 to 9, clamped, or kGradedLevel. The span of a sample starts kEndSamples
/// before it at every level, so levels below 9 shift the line by 9 - level samples towards its end:
/// deliberate, the offset belongs to the look. The kEndSamples at either end are blurred at level
/// 9, with the weights that fall inside the line; of a line of less than 19 samples all are such
/// end samples.
void blur(const std::uint8_t* source, std::uint8_t* destination, int length, long bytes, int level,
          const GaussianLevels& levels);

/// The level at `sample` of a graded line of `length` samples, 0 to 9.
int GradedLevel(int length, int sample);

}  // namespace Kivo::Effects
