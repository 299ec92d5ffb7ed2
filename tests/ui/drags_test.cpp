// The zoom bar and the effect roll: pulled out, dragged, put away.
#include "tests/ui/controls_fixture.h"

namespace Kivo {
namespace {

using namespace Testing;

TEST_F(ControlsTest, TapsSlideTheZoomBarAndTheRollOutAndBackStepByStep) {
    const auto places = [this](Spot spot, const auto& place) {
        phone_.Do(Press(spot));
        std::vector<int> seen{place()};
        for (int i = 0; i < 5; ++i) {
            phone_.Wait(10);
            seen.push_back(place());
        }
        phone_.Do({Release(spot), Tap(spot), "wait 100"});
        seen.push_back(place());
        return seen;
    };
    EXPECT_EQ(places(kZoomBar, [this] { return ZoomBarY(); }),
              (std::vector{-56, -42, -28, -14, 0, 0, -56}));
    EXPECT_EQ(places(kEffectRoll, [this] { return RollX(); }),
              (std::vector{-184, -171, -158, -145, -132, -132, -184}));
}

TEST_F(ControlsTest, ZoomDragsCountStepsOfThirtyPixels) {
    Extend();
    Drag(750, 20, -29, 0);
    EXPECT_EQ(Zoom(), 0);
    EXPECT_EQ(ZoomBarY(), -56) << "less than a step is a tap";
    phone_.Do({Tap(kZoomBar), "wait 100"});
    EXPECT_TRUE(phone_.Sounds().empty());
    Drag(750, 20, -95, 0);
    EXPECT_EQ(Zoom(), 3);
    Drag(600, 20, 30, 0);
    EXPECT_EQ(Zoom(), 2);
    EXPECT_EQ(phone_.Sounds(), std::vector<std::string>(2, "/Res/snd_change_roll.wav"));
    EXPECT_EQ(ZoomBarY(), 0) << "a drag leaves it out";
    phone_.Do({Tap(kZoomBar), "wait 100"});
    EXPECT_EQ(ZoomBarY(), -56) << "a tap takes it back, also after a drag";
    EXPECT_EQ(Zoom(), 2);
}

TEST_F(ControlsTest, RollDragsChooseEffectsThatTheCameraTypeOffers) {
    Extend();
    Drag(20, 230, 0, -95);
    EXPECT_EQ(Effect(), 3);
    Drag(20, 130, 0, 130);
    EXPECT_EQ(Effect(), 9);
    EXPECT_EQ(RollX(), -132);

    Use(CameraType::kAction);
    EXPECT_EQ(RollX(), -184) << "a new camera type puts it back";
    phone_.Do({Tap(kEffectRoll), "wait 100"});
    Drag(20, 230, 0, -30);
    EXPECT_EQ(Effect(), 3);
}

TEST_F(ControlsTest, ATapStoresTheValueThatTheLastDragLeft) {
    Extend();
    Drag(750, 20, -60, 0);
    ASSERT_EQ(Zoom(), 2);
    phone_.On([] { CurrentSettings().SetZoomLevel(ZoomLevel::k1X); });
    phone_.Do({Tap(kZoomBar), "wait 100"});
    EXPECT_EQ(Zoom(), 2);
}

TEST_F(ControlsTest, ARollThatIsDraggedPastItsEndStopsAtNormal) {
    Extend();
    const Pixels normal = WholeScreen();
    phone_.Do({"press 20 110", "move 20 479"});
    phone_.Wait(50);
    const Pixels held = WholeScreen();
    phone_.Do({"move 20 109", "move 20 140", "move 20 479"});
    phone_.Wait(50);
    EXPECT_EQ(WholeScreen(), held);
    phone_.Do({"release 20 479", "wait 100"});
    EXPECT_EQ(Effect(), 0);
    EXPECT_EQ(WholeScreen(), normal);
    Drag(20, 230, 0, -30);
    EXPECT_EQ(Effect(), 1) << "and goes on from there";
}

}  // namespace
}  // namespace Kivo
