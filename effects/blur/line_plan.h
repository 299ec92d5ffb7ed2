// Which level blurs which sample of a line.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "effects/blur/gaussian_levels.h"

namespace Kivo::Effects {

class LinePlan {
  public:
    /// Samples [first, last) at one level.
    struct Segment {
        int first;
        int last;
        int level;
    };

    /// `level` is 0 to 9 (clamped) for the whole middle of the line, or kGradedLevel.
    LinePlan(int length, int level, const GaussianLevels& levels);

    int Length() const { return length_; }
    const GaussianLevels& Levels() const { return levels_; }

    /// The middle, in order and without gaps; empty for lines of less than 19 samples.
    std::span<const Segment> Segments() const { return {segments_.data(), segmentCount_}; }
    /// The one at level 0; empty and at the end of the line when there is none.
    Segment Sharp() const { return sharp_; }

    /// Samples [0, LeadingEnd()) and [TrailingBegin(), Length()) are end samples. Lines of less
    /// than 19 samples have nothing else, all of them leading.
    int LeadingEnd() const { return leadingEnd_; }
    int TrailingBegin() const { return trailingBegin_; }
    /// The sum of the level 9 weights that fall inside the line around an end sample.
    float EndWeight(int sample) const { return endWeights_[EndIndex(sample)]; }

  private:
    std::size_t EndIndex(int sample) const;
    void AddEndWeight(int sample);

    int length_;
    int leadingEnd_;
    int trailingBegin_;
    const GaussianLevels& levels_;
    Segment sharp_;
    std::size_t segmentCount_ = 0;
    std::array<Segment, 2 * GaussianLevels::kCount> segments_{};
    std::array<float, GaussianLevels::kLongest> endWeights_{};
};

}  // namespace Kivo::Effects
