// Where the carousels' slots stand, and what their turns choose.
#include "ui/forms/carousel.h"

#include <gtest/gtest.h>

namespace Kivo {
namespace {

using Osp::Graphics::Rectangle;
using Slots = std::vector<CarouselSlot>;

TEST(Carousel, RestsWithItsCentreLargeBetweenItsNeighbours) {
    const Slots cameras{{-2, {-264, 96, 212, 188}},
                        {-1, {16, 96, 212, 188}},
                        {0, {254, 38, 292, 258}},
                        {1, {576, 96, 212, 188}}};
    const Slots effects{{-3, {-144, 331, 120, 120}}, {-2, {16, 331, 120, 120}},
                        {-1, {176, 331, 120, 120}},  {0, {315, 310, 170, 170}},
                        {1, {496, 331, 120, 120}},   {2, {656, 331, 120, 120}}};
    for (const bool toRight : {false, true}) {
        EXPECT_EQ(SlotsOf(kCameraCarousel, 0, toRight), cameras);
        EXPECT_EQ(SlotsOf(kEffectCarousel, 0, toRight), effects);
        EXPECT_EQ(SlotsOf(kCameraCarousel, 10, toRight)[2].bounds, (Rectangle{254, 38, 292, 258}));
        EXPECT_EQ(SlotsOf(kEffectCarousel, 5, toRight)[3].bounds, (Rectangle{315, 310, 170, 170}));
    }
}

TEST(Carousel, ExchangesCentreAndNeighbourWhileItTurns) {
    EXPECT_EQ(SlotsOf(kCameraCarousel, 3, false), (Slots{{-2, {-342, 96, 212, 188}},
                                                         {-1, {-62, 96, 212, 188}},
                                                         {0, {218, 56, 268, 237}},
                                                         {1, {498, 78, 236, 209}},
                                                         {2, {778, 96, 212, 188}}}));
    EXPECT_EQ(SlotsOf(kCameraCarousel, 3, true), (Slots{{-2, {-186, 96, 212, 188}},
                                                        {-1, {94, 78, 236, 209}},
                                                        {0, {374, 56, 268, 237}},
                                                        {1, {654, 96, 212, 188}}}));
    EXPECT_EQ(SlotsOf(kCameraCarousel, 9, false)[3].bounds, (Rectangle{342, 42, 284, 251}));
    EXPECT_EQ(SlotsOf(kCameraCarousel, 9, true).size(), 3u) << "as far as there is room";
    EXPECT_EQ(SlotsOf(kEffectCarousel, 4, false)[4], (CarouselSlot{1, {368, 311, 160, 160}}));
    EXPECT_EQ(SlotsOf(kEffectCarousel, 4, true)[2], (CarouselSlot{-1, {304, 311, 160, 160}}));
    EXPECT_EQ(SlotsOf(kEffectCarousel, 4, true)[3], (CarouselSlot{0, {464, 330, 130, 130}}));
    EXPECT_EQ(SlotsOf(kEffectCarousel, 4, true)[4], (CarouselSlot{1, {624, 331, 120, 120}}));
}

TEST(Turn, GoesRoundTheCameraTypes) {
    EXPECT_EQ(TypeBeside(CameraType::kKivo, true), CameraType::kTiltShift);
    EXPECT_EQ(TypeBeside(CameraType::kTiltShift, false), CameraType::kKivo);
    EXPECT_EQ(TypeBeside(CameraType::kQuad, true), CameraType::kAction);
    EXPECT_EQ(TypeBeside(CameraType::kQuad, false), CameraType::kMix);
    EXPECT_EQ(TypeBeside(static_cast<CameraType>(200), false), CameraType::kDslr);
}

/// Where turns to one side lead from effect 0 on, until they come round.
std::vector<int> RoundTrip(CameraType type, bool toRight) {
    std::vector<int> effects;
    auto effect = PhotoEffect::kNormal;
    do {
        effect = EffectBeside(type, effect, toRight);
        effects.push_back(static_cast<int>(effect));
    } while (effect != PhotoEffect::kNormal && effects.size() < 20);
    return effects;
}

TEST(Turn, SkipsTheEffectsThatTheCameraDoesWithout) {
    using Effects = std::vector<int>;
    for (const CameraType type : {CameraType::kKivo, CameraType::kDslr}) {
        EXPECT_EQ(RoundTrip(type, false), (Effects{1, 2, 3, 4, 5, 6, 7, 8, 9, 0}));
        EXPECT_EQ(RoundTrip(type, true), (Effects{9, 8, 7, 6, 5, 4, 3, 2, 1, 0}));
    }
    for (const CameraType type : {CameraType::kAction, CameraType::kTiltShift}) {
        EXPECT_EQ(RoundTrip(type, false), (Effects{3, 4, 5, 6, 7, 8, 0}));
        EXPECT_EQ(RoundTrip(type, true), (Effects{8, 7, 6, 5, 4, 3, 0}));
    }
    // A tap on another camera keeps an effect that this one does without.
    EXPECT_EQ(EffectBeside(CameraType::kMix, PhotoEffect::kFisheye, false), PhotoEffect::kConcave);
    EXPECT_EQ(EffectBeside(CameraType::kMix, PhotoEffect::kMirror, false), PhotoEffect::kNormal);
    EXPECT_EQ(EffectBeside(CameraType::kMix, PhotoEffect::kMirror, true), PhotoEffect::kEdge);
    EXPECT_EQ(EffectBeside(CameraType::kKivo, static_cast<PhotoEffect>(12), false),
              PhotoEffect::kFisheye);
}

}  // namespace
}  // namespace Kivo
