#include "effects/blur/gaussian_levels.h"

#include "effects/blur/blur.h"

namespace Kivo::Effects {

GaussianLevels::GaussianLevels() {
    for (std::size_t level = 0; level < kCount; ++level) {
        float* matrix = nullptr;
        lengths_[level] = gen_convolve_matrix(static_cast<float>(level), &matrix);
        matrices_[level].reset(matrix);
        products_[level].reset(gen_lookup_table(matrix, lengths_[level]));
    }
}

}  // namespace Kivo::Effects
