// The chooser of camera types and effects, used with one finger.
#include <algorithm>
#include <gtest/gtest.h>

#include "osp/base/clock.h"
#include "tests/support/choosing.h"
#include "tests/support/pictures/jpeg.h"

namespace Kivo {
namespace {

using namespace Testing;

constexpr const char* kCameraSound = "/Res/snd_change_camera.wav";
constexpr const char* kEffectSound = "/Res/snd_change_effect.wav";

const std::map<std::string, Osp::App::RegistryValue> kSmall{{"CAPTURE_WIDTH", 640},
                                                            {"CAPTURE_HEIGHT", 480}};

class ChooserTest : public testing::Test {
  protected:
    explicit ChooserTest(int type = 0) : phone_({.registry = WithType(type)}) {
        phone_.Do("await preview");
    }
    static std::map<std::string, Osp::App::RegistryValue> WithType(int type) {
        auto registry = kSmall;
        registry["CAM_TYPE"] = std::to_string(type);
        return registry;
    }
    int Type() { return static_cast<int>(TypeOf(phone_)); }
    int Effect() { return static_cast<int>(EffectOf(phone_)); }
    /// A finger that is slow enough for a turn between press and release.
    void Drag(int x, int y, int dx) {
        const Spot end{x + dx, y};
        phone_.Do({Press({x, y}), Line("move", end), "wait 100", Release(end)});
    }
    /// The description of a photograph that is taken now.
    std::string Photograph(bool isMix = false) {
        const std::size_t before = phone_.Photos().size();
        phone_.Do("key camera");
        if (isMix) phone_.Do({"wait 1500", "key camera"});
        phone_.Do({"await photos " + std::to_string(before + 1), "wait 300"});
        return phone_.PhotoList().back()["description"];
    }

    Phone phone_;
};

TEST_F(ChooserTest, LeadsToEveryTypeByTapAndByDragAndKeepsIt) {
    for (int i = 1; i <= 6; ++i) {
        const int type = i % 6;
        SCOPED_TRACE(kCameraTypeNames[std::size_t(type)]);
        OpenChooser(phone_);
        if (i % 2 == 0) {
            phone_.Do(Tap(kCameraAfter));
        } else {
            Drag(500, 200, -21);
            phone_.Do(Tap(kReturnButton));
        }
        phone_.Do({"await form MainForm", "await preview", "wait 200"});
        EXPECT_EQ(Type(), type);
        EXPECT_EQ(Photograph(type == 4),
                  std::string(kCameraTypeNames[std::size_t(type)]) + " (Normal),1X");
    }
    OpenChooser(phone_);
    phone_.Do({Tap(kCameraBefore), "await preview"});
    EXPECT_EQ(Type(), 5) << "round the end";
    ASSERT_EQ(phone_.End(), 0);
    Phone again({.dataFolder = phone_.DataFolder()});
    again.Do("await preview");
    EXPECT_EQ(TypeOf(again), CameraType::kTiltShift);
    EXPECT_EQ(EffectOf(again), PhotoEffect::kNormal);
}

TEST_F(ChooserTest, LeadsToEveryEffectThatIsInThePhotographThen) {
    for (int effect = 1; effect <= 10; ++effect) {
        OpenChooser(phone_);
        TurnEffects(phone_);
        LeaveForm(phone_);
        EXPECT_EQ(Photograph(),
                  "KIVO (" + std::string(kPhotoEffectNames[std::size_t(effect % 10)]) + "),1X");
    }
}

TEST_F(ChooserTest, TurnsFromTwentyOneAndElevenPixelsOnAndTakesNoDragForATap) {
    OpenChooser(phone_);
    const auto expect = [this](int type, int effect) {
        EXPECT_EQ(Type(), type);
        EXPECT_EQ(Effect(), effect);
        EXPECT_EQ(phone_.CurrentForm(), "OptionForm");
    };
    Drag(500, 479, -10);
    Drag(500, 321, 10);
    Drag(500, 310, 100);
    Drag(500, 320, -100);
    Drag(500, 52, 100);
    Drag(240, 200, 20);
    phone_.Do({"press 500 200", "move 520 200", "release 520 320"});
    expect(0, 0);
    Drag(500, 321, -11);
    expect(0, 1);
    Drag(500, 479, 11);
    expect(0, 0);
    Drag(500, 53, 21);
    expect(5, 0);
    Drag(500, 309, -21);
    expect(0, 0);
    // A finger that stays down turns place after place and does not tap in the end.
    phone_.Do({"press 700 200", "move 670 200", "wait 100", "move 660 200", "move 630 200",
               "wait 100", "move 629 200", "release 629 200"});
    expect(2, 0);
    phone_.Do({Tap({296, 200}), Tap({16, 200}), Tap({788, 200}), Tap({228, 200})});
    expect(2, 0);
    phone_.Do({Tap({580, 200}), "expect form MainForm", "await preview"});
    EXPECT_EQ(Type(), 2) << "where the ranges overlap the shown camera is meant";
}

TEST_F(ChooserTest, KeepsTheEffectAtATapAndResetsItAtADrag) {
    Choose(phone_, CameraType::kDslr, PhotoEffect::kFisheye);
    OpenChooser(phone_);
    phone_.Do({Tap(kCameraAfter), "await preview", "wait 200"});
    EXPECT_EQ(Type(), 2);
    EXPECT_EQ(Effect(), 1);
    OpenChooser(phone_);
    TurnCameras(phone_);
    EXPECT_EQ(Effect(), 0);
    Drag(500, 400, 20);
    EXPECT_EQ(Effect(), 8) << "Mirror is skipped";
    Drag(500, 200, 30);
    Drag(500, 400, -20);
    EXPECT_EQ(Effect(), 3) << "and so are Fisheye and Concave";
    Drag(500, 200, 30);
    EXPECT_EQ(Type(), 1);
    EXPECT_EQ(Effect(), 3) << "DSLR has all effects, so there is nothing to reset";
}

TEST_F(ChooserTest, TurnsInTenAndFiveStepsAndListensToNobodyMeanwhile) {
    OpenChooser(phone_);
    (void)phone_.Sounds();
    phone_.Do({"press 500 200", "move 470 200", "wait 50", "release 470 200", "tap 680 200",
               "press 400 400", "move 300 400", "release 300 400", "wait 49"});
    EXPECT_EQ(Type(), 0);
    phone_.Wait(1);
    EXPECT_EQ(Type(), 1);
    phone_.Do({"press 500 400", "move 480 400", "wait 49"});
    EXPECT_EQ(Effect(), 0);
    phone_.Wait(1);
    EXPECT_EQ(Effect(), 1);
    EXPECT_EQ(phone_.CurrentForm(), "OptionForm");
    EXPECT_EQ(phone_.Sounds(), (std::vector<std::string>{kCameraSound, kEffectSound}));
}

TEST_F(ChooserTest, TakesNoLongerWhenItsTimerIsLate) {
    OpenChooser(phone_);
    phone_.Do({"press 500 200", "move 470 200", "wait 20"});
    const auto advance = [this](int ms) {
        phone_.On([ms] {
            Osp::Base::Clock& clock = Osp::Base::EventLoop::Current().GetClock();
            static_cast<Osp::Base::VirtualClock&>(clock).AdvanceTo(clock.Now() +
                                                                   std::chrono::milliseconds(ms));
        });
        phone_.Wait(0);
    };
    advance(75);
    EXPECT_EQ(Type(), 0) << "nine steps of ten";
    phone_.Wait(10);
    EXPECT_EQ(Type(), 1);
    phone_.Do({"release 470 200", "press 500 400", "move 470 400"});
    advance(1000);
    EXPECT_EQ(Effect(), 1) << "one place, however late";
}

TEST_F(ChooserTest, ForgetsTheFingerInTheBackgroundAndStaysOpen) {
    OpenChooser(phone_);
    phone_.Do({"press 100 400", "background", "wait 1000", "foreground", "wait 1000",
               "expect form OptionForm"});
    Drag(500, 315, 100);
    EXPECT_EQ(Effect(), 0);
    phone_.Do({"press 500 200", "move 470 200", "background", "wait 1000", "foreground"});
    EXPECT_EQ(Type(), 1) << "a turn that had begun ends";
    LeaveForm(phone_);
    EXPECT_EQ(Photograph(), "DSLR (Normal),1X");
}

TEST_F(ChooserTest, ComesBackToACameraThatWasUnpluggedMeanwhile) {
    OpenChooser(phone_);
    phone_.Do({"unplug primary", Tap(kCameraAfter), "await form MainForm", "wait 500"});
    phone_.Do({"key camera", "wait 3000"});
    EXPECT_TRUE(phone_.Photos().empty());
    phone_.Do({"plug primary", "wait 500"});
    EXPECT_EQ(Photograph(), "DSLR (Normal),1X");
}

TEST_F(ChooserTest, IsSilentWithoutEffectSound) {
    OpenSettings(phone_);
    phone_.Do(Tap(kSoundToggle));
    LeaveForm(phone_);
    OpenChooser(phone_);
    (void)phone_.Sounds();
    TurnCameras(phone_);
    TurnEffects(phone_);
    EXPECT_EQ(Type(), 1);
    EXPECT_TRUE(phone_.Sounds().empty());
}

class SeriesTest : public ChooserTest {
  protected:
    SeriesTest() : ChooserTest(4) {}
};

TEST_F(SeriesTest, EndsWhenItsCameraIsLeft) {
    // A second press that is refused gives the buttons back while the first frame still waits.
    phone_.Do({"key camera", "wait 1500", "unplug primary", "key camera", "plug primary"});
    OpenChooser(phone_);
    LeaveForm(phone_);
    phone_.Do({"key camera", "wait 2000", "expect photos 0"});
    phone_.Do({"key camera", "await photos 1"});
    EXPECT_TRUE(IsWholeJpeg(phone_.Photos()[0]));
}

}  // namespace
}  // namespace Kivo
