#include "ui/drag_steps.h"

#include <algorithm>
#include <cstdlib>

namespace Kivo {

namespace {

constexpr int kZoomLevels = static_cast<int>(kZoomLevelLabels.size());
constexpr int kEffects = static_cast<int>(kPhotoEffectNames.size());

int Forward(CameraType type, int sum) {
    if (!OffersAllEffects(type)) {
        // Fisheye and Concave lead on to B&W, Mirror to Normal.
        if (sum == 1 || sum == 2 || sum == 11 || sum == 12) return 3;
        if (sum == 9) return 0;
    }
    return sum > 9 ? sum - kEffects : sum;
}

int Backward(CameraType type, int difference) {
    if (!OffersAllEffects(type)) {
        if (difference == 1 || difference == 2) return 0;
        if (difference == 9 || difference == -1) return 8;
    }
    return difference < 0 ? difference + kEffects : difference;
}

}  // namespace

int ZoomAfterDrag(int level, int dx) {
    const int steps = std::abs(dx) / kPixelsPerDragStep;
    return dx < 0 ? std::min(level + steps, kZoomLevels - 1) : std::max(level - steps, 0);
}

int EffectAfterDrag(CameraType type, int effect, int dy) {
    const int steps = std::abs(dy) / kPixelsPerDragStep;
    return dy < 0 ? Forward(type, effect + steps) : Backward(type, effect - steps);
}

}  // namespace Kivo
