#include "effects/blur/line_plan.h"

#include <algorithm>
#include <cassert>

#include "effects/blur/blur.h"

// How a line of samples falls into parts that are blurred alike.
//
// The first and the last nine samples are end samples: always at level 9, with the weights that
// fall inside the line and divided by their sum, which depends on the sample's place alone and is
// summed here, in ascending order and single precision, as the blur itself would. The middle is a
// row of segments, each at one level. A plan is made once for all rows (or columns) of a picture.
//
// Invariants: segments follow each other without gaps from LeadingEnd to TrailingBegin, none is
// empty, and neighbours differ in level. A graded line goes from high levels down to the sharp
// middle and up again, so it has at most 9 + 1 + 9 segments, one of them at level 0. A line of less
// than 19 samples, where the two ends would overlap, is leading end samples only: no capture size
// is that small, but developed pictures may be.

namespace Kivo::Effects {

LinePlan::LinePlan(int length, int level, const GaussianLevels& levels)
    : length_(length),
      leadingEnd_(length < GaussianLevels::kLongest ? length : kEndSamples),
      trailingBegin_(length < GaussianLevels::kLongest ? length : length - kEndSamples),
      levels_(levels),
      sharp_{length, length, 0} {
    assert(length > 0);
    for (int s = leadingEnd_; s < trailingBegin_; ++s) {
        const int own = level == kGradedLevel ? GradedLevel(length, s)
                                              : std::clamp(level, 0, GaussianLevels::kCount - 1);
        if (segmentCount_ == 0 || segments_[segmentCount_ - 1].level != own) {
            assert(segmentCount_ < segments_.size());
            segments_[segmentCount_++] = {s, s, own};
        }
        segments_[segmentCount_ - 1].last = s + 1;
        if (own == 0) sharp_ = segments_[segmentCount_ - 1];
    }
    for (int s = 0; s < leadingEnd_; ++s) AddEndWeight(s);
    for (int s = trailingBegin_; s < length_; ++s) AddEndWeight(s);
}

std::size_t LinePlan::EndIndex(int sample) const {
    assert(sample >= 0 && sample < length_);
    assert(sample < leadingEnd_ || sample >= trailingBegin_);
    const int index = sample < leadingEnd_ ? sample : leadingEnd_ + sample - trailingBegin_;
    return static_cast<std::size_t>(index);
}

void LinePlan::AddEndWeight(int sample) {
    const auto weights = levels_.Weights(GaussianLevels::kCount - 1);
    float& sum = endWeights_[EndIndex(sample)];
    for (int j = 0; j < GaussianLevels::kLongest; ++j) {
        const int at = sample + j - kEndSamples;
        if (at >= 0 && at < length_) sum += weights[static_cast<std::size_t>(j)];
    }
}

}  // namespace Kivo::Effects
