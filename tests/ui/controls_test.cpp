// The controls of the camera screen, used with one finger.
#include <gtest/gtest.h>

#include "app/model/action_ids.h"
#include "tests/support/camera_screen.h"
#include "tests/support/main_form_access.h"
#include "tests/support/phone.h"
#include "tests/support/subjects.h"

namespace Kivo {
namespace {

using namespace Testing;
using nlohmann::json;
using Pixels = std::vector<std::uint32_t>;

struct Box {
    int x, y, width, height;
};

class ControlsTest : public testing::Test {
  protected:
    // A camera that shows a still picture, so that screens can be compared.
    ControlsTest()
        : subjects_(1), phone_({.primary = subjects_.Source(), .secondary = subjects_.Source()}) {
        phone_.Do({"await preview", "wait 100"});
    }

    void Use(CameraType type) {
        phone_.On([type] { Choose(type, PhotoEffect::kNormal); });
        phone_.Do({"wait 200", "await preview", "wait 200"});
    }
    template <class Get>
    auto Setting(Get get) {
        return phone_.On([get] { return get(CurrentSettings()); });
    }
    int Zoom() {
        return Setting([](auto& s) { return static_cast<int>(s.GetZoomLevel()); });
    }
    int Effect() {
        return Setting([](auto& s) { return static_cast<int>(s.GetPhotoEffect()); });
    }
    json Find(const std::string& name) {
        const json screen = phone_.Screen();
        for (const json& control : screen["controls"]) {
            if (control["text"] == name) return control;
        }
        return nullptr;
    }
    int ZoomBarY() { return Find("Zoom")["bounds"][1]; }
    int RollX() { return Find("Effect")["bounds"][0]; }
    bool IsMaskShown() {
        const json screen = phone_.Screen();
        return std::ranges::any_of(screen["controls"],
                                   [](const json& c) { return c["kind"] == "panel"; });
    }
    Pixels Shown(const Box& box) {
        return phone_.On([box] {
            const auto& screen = Osp::Ui::Screen::Current().Compose();
            Pixels pixels;
            for (int y = box.y; y < box.y + box.height; ++y) {
                const auto* row = reinterpret_cast<const std::uint32_t*>(
                    screen.Data() + std::ptrdiff_t{screen.StrideBytes()} * y);
                pixels.insert(pixels.end(), row + box.x, row + box.x + box.width);
            }
            return pixels;
        });
    }
    Pixels WholeScreen() { return Shown({0, 0, 800, 480}); }
    void Drag(int x, int y, int dx, int dy) {
        const auto text = [](int a, int b) { return std::to_string(a) + " " + std::to_string(b); };
        phone_.Do("press " + text(x, y));
        phone_.Do("move " + text(x + dx, y + dy));
        phone_.Do("release " + text(x + dx, y + dy));
        phone_.Wait(100);
    }
    void Extend() {
        phone_.Do({Tap(kZoomBar), "wait 100", Tap(kEffectRoll), "wait 100"});
        EXPECT_EQ(ZoomBarY(), 0);
        EXPECT_EQ(RollX(), -132);
    }

    Subjects subjects_;
    Phone phone_;
};

TEST_F(ControlsTest, TapsSlideTheZoomBarAndTheRollOutAndBackStepByStep) {
    const std::vector<int> zoomOut{-56, -42, -28, -14, 0, 0};
    const std::vector<int> rollOut{-184, -171, -158, -145, -132, -132};
    phone_.Do(Press(kZoomBar));
    std::vector<int> places{ZoomBarY()};
    for (int i = 0; i < 5; ++i) {
        phone_.Wait(10);
        places.push_back(ZoomBarY());
    }
    EXPECT_EQ(places, zoomOut);
    phone_.Do({Release(kZoomBar), Tap(kZoomBar), "wait 100"});
    EXPECT_EQ(ZoomBarY(), -56);

    phone_.Do(Press(kEffectRoll));
    places = {RollX()};
    for (int i = 0; i < 5; ++i) {
        phone_.Wait(10);
        places.push_back(RollX());
    }
    EXPECT_EQ(places, rollOut);
    phone_.Do({Release(kEffectRoll), Tap(kEffectRoll), "wait 50"});
    EXPECT_EQ(RollX(), -184);
}

TEST_F(ControlsTest, ZoomDragsCountStepsOfThirtyPixels) {
    Extend();
    Drag(750, 20, -29, 0);
    EXPECT_EQ(Zoom(), 0);
    EXPECT_EQ(ZoomBarY(), -56) << "less than a step is a tap";
    phone_.Do({Tap(kZoomBar), "wait 100"});
    EXPECT_TRUE(phone_.Sounds().empty());
    Drag(750, 20, -30, 0);
    EXPECT_EQ(Zoom(), 1);
    Drag(750, 20, -95, 0);
    EXPECT_EQ(Zoom(), 4);
    Drag(600, 20, 30, 0);
    EXPECT_EQ(Zoom(), 3);
    Drag(790, 20, -280, 0);
    EXPECT_EQ(Zoom(), 6);
    EXPECT_EQ(phone_.Sounds(), std::vector<std::string>(4, "/Res/snd_change_roll.wav"));
    EXPECT_EQ(ZoomBarY(), 0) << "a drag leaves it out";
    phone_.Do({Tap(kZoomBar), "wait 100"});
    EXPECT_EQ(ZoomBarY(), -56) << "a tap takes it back, also after a drag";
    EXPECT_EQ(Zoom(), 6);
}

TEST_F(ControlsTest, RollDragsChooseEffectsThatTheCameraTypeOffers) {
    Extend();
    Drag(20, 230, 0, -29);
    EXPECT_EQ(Effect(), 0);
    phone_.Do({Tap(kEffectRoll), "wait 100"});
    Drag(20, 230, 0, -30);
    EXPECT_EQ(Effect(), 1);
    Drag(20, 230, 0, -95);
    EXPECT_EQ(Effect(), 4);
    Drag(20, 130, 0, 160);
    EXPECT_EQ(Effect(), 9);
    EXPECT_EQ(RollX(), -132);

    Use(CameraType::kAction);
    EXPECT_EQ(RollX(), -184) << "a new camera type puts it back";
    phone_.Do({Tap(kEffectRoll), "wait 100"});
    Drag(20, 230, 0, -30);
    EXPECT_EQ(Effect(), 3);
    Drag(20, 230, 0, 30);
    EXPECT_EQ(Effect(), 0);
}

TEST_F(ControlsTest, ATapStoresTheValueThatTheLastDragLeft) {
    Extend();
    Drag(750, 20, -60, 0);
    ASSERT_EQ(Zoom(), 2);
    phone_.On([] { CurrentSettings().SetZoomLevel(ZoomLevel::k1X); });
    phone_.Do({Tap(kZoomBar), "wait 100"});
    EXPECT_EQ(Zoom(), 2);
}

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
