// The controls of the camera screen, used with one finger.
#include "tests/ui/controls_fixture.h"

namespace Kivo {
namespace {

using namespace Testing;
using nlohmann::json;

TEST_F(ControlsTest, AHeldValueButtonShowsWhatItsActionWillSet) {
    const struct {
        const char* name;
        Spot place;
    } buttons[] = {{"HDR", kHdrButton}, {"White balance", kWhiteBalanceButton}};
    for (const auto& button : buttons) {
        SCOPED_TRACE(button.name);
        const Box box{button.place.x - 40, 385, 80, 80};
        const Pixels before = WholeScreen();
        const Pixels looks = Shown(box);
        phone_.Do(Press(button.place));
        EXPECT_TRUE(IsMaskShown());
        const Pixels held = WholeScreen();
        EXPECT_NE(held, before);
        phone_.Do(Release(kNoControl));
        phone_.Wait(100);
        EXPECT_EQ(WholeScreen(), before) << "released outside nothing has changed";
        phone_.Do(Tap(button.place));
        phone_.Wait(100);
        EXPECT_NE(Shown(box), looks) << "the value has changed, and with it the picture";
    }
    EXPECT_TRUE(Setting([](auto& s) { return s.IsHdrEnabled(); }));
    EXPECT_EQ(Setting([](auto& s) { return static_cast<int>(s.GetWhiteBalance()); }), 1);
    for (int i = 0; i < 4; ++i) phone_.Do({Tap(kWhiteBalanceButton), "wait 100"});
    EXPECT_EQ(Setting([](auto& s) { return static_cast<int>(s.GetWhiteBalance()); }), 0);
}

TEST_F(ControlsTest, ARefusedFlashStaysOffAndLooksOff) {
    const Pixels before = WholeScreen();
    phone_.Do({Tap(kFlashButton), "wait 200"});
    EXPECT_EQ(Setting([](auto& s) { return s.GetFlashState(); }), FlashState::kOff);
    EXPECT_EQ(WholeScreen(), before);
}

TEST_F(ControlsTest, TheFrontCameraHasNeitherZoomNorWhiteBalanceButTheScreenAsFlash) {
    phone_.Do({Tap(kSwapButton), "wait 500", "await preview", "wait 100"});
    EXPECT_TRUE(Find("Zoom").is_null());
    EXPECT_TRUE(Find("White balance").is_null());
    phone_.Do({Tap(kFlashButton), "wait 200"});
    EXPECT_EQ(Setting([](auto& s) { return s.GetFlashState(); }), FlashState::kOn);
    phone_.Do("key camera");
    phone_.Wait(50);
    const Pixels lit = Shown({20, 120, 100, 60});
    EXPECT_EQ(std::ranges::count_if(lit, [](auto p) { return (p & 0xFFFFFF) == 0xFFFFFF; }),
              100 * 60)
        << "the screen is the flash";
    phone_.Do({"wait 3000", Tap(kSwapButton), "wait 500", "await preview", "wait 100"});
    EXPECT_FALSE(Find("Zoom").is_null());
    EXPECT_FALSE(Find("White balance").is_null());
}

TEST_F(ControlsTest, WhatTheKeyTakesFromTheFingerShowsWhatIsSet) {
    phone_.Do({Tap(kSwapButton), "wait 500", "await preview", "wait 200"});
    const Pixels before = WholeScreen();
    for (const Spot place : {kHdrButton, kFlashButton}) {
        SCOPED_TRACE(Press(place));
        phone_.Do({Press(place), "wait 50", "key camera", "wait 100", Release(place), "wait 2000"});
        EXPECT_EQ(WholeScreen(), before);
    }
    EXPECT_FALSE(Setting([](auto& s) { return s.IsHdrEnabled(); }));
    EXPECT_EQ(Setting([](auto& s) { return s.GetFlashState(); }), FlashState::kOff);
    EXPECT_EQ(phone_.Photos().size(), 2u);

    phone_.Do({Tap(kSwapButton), "wait 500", "await preview", "wait 200"});
    Extend();
    const Pixels out = WholeScreen();
    phone_.Do({"press 750 20", "move 690 20", "key camera", "wait 2000", "release 690 20"});
    phone_.Wait(200);
    EXPECT_EQ(WholeScreen(), out);
    EXPECT_EQ(Zoom(), 0);
    phone_.Do({Tap(kZoomBar), "wait 200"});
    EXPECT_EQ(Zoom(), 0) << "a drag that was taken away leaves nothing to store";
}

TEST_F(ControlsTest, TheBackgroundTakesFingerHelpAndDragAway) {
    const Pixels before = WholeScreen();
    for (const std::string& leave :
         {Tap(kHelpButton), Press(kHdrButton), Press(kFlashButton), Press(kShutterButton)}) {
        SCOPED_TRACE(leave);
        phone_.Do({leave, "wait 50", "background", "wait 50", "foreground"});
        const Pixels covered = WholeScreen();
        phone_.Do({Release(kHdrButton), "wait 500"});
        EXPECT_EQ(WholeScreen(), before);
        phone_.Do({"background", "wait 50", "foreground"});
        EXPECT_EQ(WholeScreen(), covered) << "nothing of it flashes up";
        phone_.Do("wait 500");
    }
    EXPECT_TRUE(phone_.Photos().empty());
    EXPECT_FALSE(Setting([](auto& s) { return s.IsHdrEnabled(); }));

    Extend();
    phone_.Do({"press 750 20", "move 690 20", "background", "foreground", "wait 500"});
    EXPECT_EQ(WholeScreen(), before);
    EXPECT_EQ(Zoom(), 0);
}

TEST_F(ControlsTest, ARequestToARunningSessionCoversItForAFrameOnly) {
    const Pixels before = WholeScreen();
    phone_.On([] {
        (void)Osp::Ui::Screen::Current().GetCurrentForm()->SendUserEvent(kRequestForeground,
                                                                         nullptr);
    });
    EXPECT_NE(WholeScreen(), before);
    phone_.Wait(300);
    EXPECT_EQ(WholeScreen(), before);
}

TEST_F(ControlsTest, TheFocusGuideForgetsAPressThatFails) {
    phone_.Do({"unplug primary", "wait 200"});
    const Pixels before = WholeScreen();
    phone_.Do({"key camera", "wait 200"});
    EXPECT_EQ(WholeScreen(), before);
    Use(CameraType::kAction);
    const Pixels action = WholeScreen();
    phone_.Do({"key camera", "wait 200"});
    EXPECT_EQ(WholeScreen(), action) << "nor does the shutter count it";
}

TEST_F(ControlsTest, ADoubleExposureShowsThatItWaitsAlsoAfterTheBackground) {
    const Box shutter{682, 173, 109, 109};
    Use(CameraType::kMix);
    phone_.Do({"key camera", "wait 1500"});
    const Pixels waiting = Shown(shutter);
    phone_.Do({"background", "wait 100", "foreground", "await preview", "wait 500"});
    EXPECT_EQ(Shown(shutter), waiting);
}

TEST_F(ControlsTest, NothingAnswersWhileAPhotographIsTaken) {
    Extend();
    Use(CameraType::kQuad);
    phone_.Do({Tap(kZoomBar), "wait 100", "key camera"});
    Drag(750, 20, -95, 0);
    phone_.Do({Tap(kHdrButton), Tap(kWhiteBalanceButton), Tap(kSwapButton)});
    EXPECT_EQ(Zoom(), 0);
    EXPECT_FALSE(Setting([](auto& s) { return s.IsHdrEnabled(); }));
    phone_.Do({"await photos 1", "wait 200"});
    Drag(750, 20, -95, 0);
    EXPECT_EQ(Zoom(), 3) << "and afterwards everything does";
}

TEST_F(ControlsTest, HelpOpensShowsTheCreditAndClosesAtEachPlace) {
    const Pixels before = WholeScreen();
    const auto open = [this] {
        phone_.Do({Tap(kHelpButton), "wait 100"});
        EXPECT_FALSE(phone_.Button(kActionCloseHelp).is_null());
        EXPECT_FALSE(phone_.Button(kActionLogo).is_null());
    };
    open();
    const Pixels help = WholeScreen();
    EXPECT_NE(help, before);
    phone_.Do({"tap 750 200", "wait 100"});
    EXPECT_EQ(WholeScreen(), help) << "the shutter lies below";
    for (const char* credit : {"tap 190 44", "tap 257 31", "tap 435 99"}) {
        phone_.Do({credit, "wait 100"});
        EXPECT_NE(WholeScreen(), help) << credit;
        phone_.Do({"tap 231 135", "wait 100"});
        EXPECT_EQ(WholeScreen(), help) << "back from " << credit;
    }
    phone_.Do({"tap 256 31", "tap 435 100", "tap 16 401", "tap 67 450", "tap 66 451", "wait 100"});
    EXPECT_EQ(WholeScreen(), help) << "a pixel beside the places";
    for (const std::string& close :
         {std::string("tap 17 401"), std::string("tap 66 450"), Tap(kCloseHelpButton)}) {
        phone_.Do({close, "wait 100"});
        EXPECT_FALSE(IsMaskShown()) << close;
        EXPECT_EQ(WholeScreen(), before) << close;
        open();
    }
}

TEST_F(ControlsTest, TheMaskFadesInSevenSteps) {
    phone_.Do({Press(kHdrButton), Release(kNoControl), "wait 69"});
    EXPECT_TRUE(IsMaskShown());
    phone_.Wait(1);
    EXPECT_FALSE(IsMaskShown());
}

TEST_F(ControlsTest, TheShutterCountsTheFramesOfASeries) {
    const Box shutter{682, 173, 109, 109};
    Use(CameraType::kAction);
    std::vector<Pixels> looks{Shown(shutter)};
    phone_.Do("key camera");
    for (int i = 0; i < 100 && phone_.Photos().empty(); ++i) {
        const Pixels look = Shown(shutter);
        if (look != looks.back() && !IsMaskShown()) looks.push_back(look);
        phone_.Wait(10);
    }
    std::ranges::sort(looks);
    const auto distinct = std::ranges::unique(looks);
    // This camera delivers the first frame at once, so nobody sees the shutter wait for it.
    EXPECT_EQ(std::distance(looks.begin(), distinct.begin()), 4) << "none, and two to four";
}

TEST_F(ControlsTest, EveryButtonHasANameThatAPersonWouldCallItBy) {
    phone_.Do({Tap(kHelpButton), "wait 100"});
    const json screen = phone_.Screen();
    int buttons = 0;
    for (const json& control : screen["controls"]) {
        if (control["kind"] != "button") continue;
        ++buttons;
        EXPECT_NE(control["text"], "") << control;
    }
    EXPECT_EQ(buttons, 11);
}

}  // namespace
}  // namespace Kivo
