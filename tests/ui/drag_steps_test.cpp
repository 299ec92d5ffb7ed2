#include "ui/drag_steps.h"

#include <gtest/gtest.h>

namespace Kivo {
namespace {

TEST(ZoomAfterDrag, CountsWholeStepsAndStaysInRange) {
    EXPECT_EQ(ZoomAfterDrag(0, -29), 0);
    EXPECT_EQ(ZoomAfterDrag(0, -30), 1);
    EXPECT_EQ(ZoomAfterDrag(0, -95), 3);
    EXPECT_EQ(ZoomAfterDrag(4, 59), 3);
    EXPECT_EQ(ZoomAfterDrag(5, -300), 6);
    EXPECT_EQ(ZoomAfterDrag(1, 300), 0);
}

TEST(EffectAfterDrag, WrapsAroundOnTheTypesThatOfferAll) {
    for (const CameraType type : {CameraType::kKivo, CameraType::kDslr}) {
        EXPECT_EQ(EffectAfterDrag(type, 0, -95), 3);
        EXPECT_EQ(EffectAfterDrag(type, 9, -30), 0);
        EXPECT_EQ(EffectAfterDrag(type, 0, 30), 9);
        EXPECT_EQ(EffectAfterDrag(type, 2, 95), 9);
    }
}

TEST(EffectAfterDrag, SkipsWhatTheOtherTypesDoNotOffer) {
    const struct {
        int effect, dy, result;
    } cases[] = {
        {0, -30, 3}, {0, -60, 3},  {0, -90, 3}, {8, -30, 0}, {8, -60, 0},
        {8, -90, 3}, {8, -120, 3}, {3, 30, 0},  {3, 60, 0},  {3, 90, 0},
        {0, 30, 8},  {0, 60, 8},   {3, 120, 8}, {4, -30, 5}, {5, 30, 4},
    };
    for (const CameraType type :
         {CameraType::kAction, CameraType::kQuad, CameraType::kMix, CameraType::kTiltShift}) {
        for (const auto& c : cases) {
            EXPECT_EQ(EffectAfterDrag(type, c.effect, c.dy), c.result)
                << "from " << c.effect << " by " << c.dy;
        }
    }
}

TEST(EffectAfterDrag, WrapsOnceOnly) {
    EXPECT_EQ(EffectAfterDrag(CameraType::kKivo, 9, -360), 11) << "which is taken for Normal";
    EXPECT_EQ(EffectAfterDrag(CameraType::kKivo, 0, 360), -2);
}

}  // namespace
}  // namespace Kivo
