// The ten blur levels, built once.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <memory>
#include <span>

namespace Kivo::Effects {

/// Immutable, so one object serves every thread.
class GaussianLevels {
  public:
    static constexpr int kCount = 10;
    static constexpr int kLongest = 19;

    GaussianLevels();

    /// The weights of a level, 2 * level + 1 of them.
    std::span<const float> Weights(int level) const {
        return {matrices_[Index(level)].get(), static_cast<std::size_t>(Length(level))};
    }
    int Length(int level) const { return lengths_[Index(level)]; }
    /// Products of weights and byte values, as gen_lookup_table lays them out.
    const float* Products(int level) const { return products_[Index(level)].get(); }

  private:
    static std::size_t Index(int level) {
        assert(level >= 0 && level < kCount);
        return static_cast<std::size_t>(level);
    }

    std::array<std::unique_ptr<float[]>, kCount> matrices_;
    std::array<int, kCount> lengths_{};
    std::array<std::unique_ptr<float[]>, kCount> products_;
};

}  // namespace Kivo::Effects
