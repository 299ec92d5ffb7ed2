#include "effects/blur/line_plan.h"

#include <algorithm>

#include "effects/blur/blur.h"

namespace Kivo::Effects {

LinePlan::LinePlan(int length, int level, const GaussianLevels& levels)
    : length_(length),
      leadingEnd_(length < GaussianLevels::kLongest ? length : kEndSamples),
      trailingBegin_(length < GaussianLevels::kLongest ? length : length - kEndSamples),
      levels_(levels),
      sharp_{length, length, 0} {
    for (int s = leadingEnd_; s < trailingBegin_; ++s) {
        const int own = level == kGradedLevel ? GradedLevel(length, s)
                                              : std::clamp(level, 0, GaussianLevels::kCount - 1);
        if (segmentCount_ == 0 || segments_[segmentCount_ - 1].level != own) {
            segments_[segmentCount_++] = {s, s, own};
        }
        segments_[segmentCount_ - 1].last = s + 1;
        if (own == 0) sharp_ = segments_[segmentCount_ - 1];
    }
    for (int s = 0; s < leadingEnd_; ++s) AddEndWeight(s);
    for (int s = trailingBegin_; s < length_; ++s) AddEndWeight(s);
}

std::size_t LinePlan::EndIndex(int sample) const {
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
