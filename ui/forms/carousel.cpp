// A slot is placed by its number from the left, not by what it shows: a turn moves all of them, and
// when it ends the values take one step and the slots are back at rest, with the same pictures at
// nearly the same places. Nearly: the centre at rest is a little off its slot, because its picture
// is larger than the others.
#include "ui/forms/carousel.h"

#include <cassert>

namespace Kivo {

using Osp::Graphics::Rectangle;

namespace {

constexpr int kTypes = static_cast<int>(kCameraTypeNames.size());
constexpr int kEffects = static_cast<int>(kPhotoEffectNames.size());

Rectangle BoundsOf(const Carousel& carousel, int index, int step, bool toRight) {
    const bool isMoving = step > 0 && step < carousel.steps;
    const int left =
        carousel.left + carousel.spacing * index + carousel.shift * (toRight ? step : -step);
    const auto& [width, height] = carousel.growth;
    if (index == carousel.before) {
        if (!isMoving) return carousel.centre;
        return {left, carousel.centre.y + carousel.rise * step,
                carousel.centre.width - width * step, carousel.centre.height - height * step};
    }
    const bool isComing = isMoving && index == carousel.before + (toRight ? -1 : 1);
    const int grown = isComing ? step : 0;
    return {left, carousel.sideTop - carousel.rise * grown, carousel.side.width + width * grown,
            carousel.side.height + height * grown};
}

int Wrapped(int value, int count) {
    return (value + count) % count;
}

}  // namespace

std::vector<CarouselSlot> SlotsOf(const Carousel& carousel, int step, bool toRight) {
    assert(step >= 0 && step <= carousel.steps);
    std::vector<CarouselSlot> slots;
    const int shifted = carousel.firstOrigin + carousel.shift * (toRight ? step : -step);
    for (int i = 0; shifted + carousel.spacing * i <= carousel.lastOrigin; ++i) {
        slots.push_back({i - carousel.before, BoundsOf(carousel, i, step, toRight)});
    }
    return slots;
}

CameraType TypeBeside(CameraType type, bool toRight) {
    const int number = static_cast<int>(type);
    const int known = number < kTypes ? number : 0;
    return static_cast<CameraType>(Wrapped(known + (toRight ? -1 : 1), kTypes));
}

PhotoEffect EffectBeside(CameraType type, PhotoEffect effect, bool toRight) {
    const PhotoEffect known = KnownEffect(static_cast<std::size_t>(effect));
    if (!OffersAllEffects(type)) {
        if (toRight && known == PhotoEffect::kBlackWhite) return PhotoEffect::kNormal;
        if (toRight && known == PhotoEffect::kNormal) return PhotoEffect::kEdge;
        if (!toRight && known == PhotoEffect::kNormal) return PhotoEffect::kBlackWhite;
        if (!toRight && known == PhotoEffect::kEdge) return PhotoEffect::kNormal;
    }
    return static_cast<PhotoEffect>(
        Wrapped(static_cast<int>(known) + (toRight ? -1 : 1), kEffects));
}

}  // namespace Kivo
