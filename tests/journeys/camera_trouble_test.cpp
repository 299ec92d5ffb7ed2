// Cameras that fail, and what one press of the shutter does afterwards.
#include <gtest/gtest.h>

#include "app/model/action_ids.h"
#include "osp/media/camera/camera_service.h"
#include "tests/support/camera_screen.h"
#include "tests/support/faulty_camera.h"
#include "tests/support/main_form_access.h"
#include "tests/support/phone.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/pictures/subjects.h"

namespace Kivo {
namespace {

using namespace Testing;
using Osp::Media::CameraSelection;
using Osp::Media::CameraService;

/// Puts cameras that can be told to fail, on the loop thread, in the place of the good ones.
void BreakCameras(Phone& phone, const Fault& fault) {
    phone.Do({"await preview", "background"});
    phone.On([&fault] {
        for (const auto selection : {CameraSelection::kPrimary, CameraSelection::kSecondary}) {
            auto& device = CameraService::Current().Slot(selection).device;
            device = std::make_unique<FaultyCamera>(std::move(device), fault);
        }
    });
    phone.Do({"foreground", "await preview", "wait 200"});
}

class CameraTrouble : public testing::Test {
  protected:
    CameraTrouble() { BreakCameras(phone_, fault_); }
    void UseFrontCamera() { phone_.Do({Tap(kSwapButton), "await preview", "wait 200"}); }
    int ZoomStep() {
        return phone_.On([] {
            auto& device = CameraService::Current().Slot(CameraSelection::kPrimary).device;
            return static_cast<FaultyCamera&>(*device).ZoomStep();
        });
    }
    void SetFault(Fault fault) {
        phone_.On([this, fault] { fault_ = fault; });
    }
    void ExpectPressTakesPhotograph() {
        SetFault(Fault::kNone);
        EXPECT_TRUE(phone_.IsEnabled(kActionCapture));
        const std::size_t before = phone_.Photos().size();
        phone_.Do({"key camera", "wait 2000"});
        const auto photos = phone_.Photos();
        ASSERT_EQ(photos.size(), before + 1);
        EXPECT_TRUE(IsWholeJpeg(photos.back()));
    }

    Fault fault_ = Fault::kNone;  // the loop thread's
    Phone phone_;
};

TEST_F(CameraTrouble, BadPicturesAreNoPhotographsAndOneThatIsDeliveredTwiceIsOne) {
    for (const Fault fault :
         {Fault::kSilent, Fault::kRubbish, Fault::kTruncated, Fault::kLate, Fault::kTwice}) {
        SCOPED_TRACE(static_cast<int>(fault));
        SetFault(fault);
        const std::size_t before = phone_.Photos().size();
        phone_.Do({"key camera", "wait 6000"});
        EXPECT_EQ(phone_.Photos().size(), before + (fault == Fault::kTwice ? 1 : 0));
        ExpectPressTakesPhotograph();
    }
}

TEST_F(CameraTrouble, WithoutFocusThePictureIsTakenAtOnce) {
    SetFault(Fault::kUnfocused);
    phone_.Do({"key camera", "wait 2000"});
    EXPECT_EQ(phone_.Photos().size(), 1u);
    EXPECT_TRUE(phone_.MarksMs("focus-done").empty());
    ExpectPressTakesPhotograph();
}

TEST_F(CameraTrouble, TheGuardTriesAgainThreeSecondsAfterFocusing) {
    SetFault(Fault::kRefuses);
    phone_.Do({"key camera", "wait 500"});
    SetFault(Fault::kNone);
    phone_.Do("await photos 1");
    const auto focused = phone_.MarksMs("focus-done");
    ASSERT_EQ(focused.size(), 2u);
    const long long restart = 3000 + 200;  // and the focusing of the second try
    EXPECT_GE(focused[1] - focused[0], 3000);
    EXPECT_LE(focused[1] - focused[0], restart);
    ExpectPressTakesPhotograph();
}

TEST_F(CameraTrouble, TheGuardsRestartKeepsTheZoomThatTheBarShows) {
    phone_.Do({Tap(kZoomBar), "wait 100", "drag 750 20 660 20", "wait 100"});
    ASSERT_EQ(ZoomStep(), 3);
    SetFault(Fault::kRefuses);
    phone_.Do({"key camera", "wait 3400"});
    EXPECT_EQ(phone_.MarksMs("focus-done").size(), 2u);
    EXPECT_EQ(ZoomStep(), 3);
}

TEST_F(CameraTrouble, APreviewThatEndsLeavesControlsThatStartItAgain) {
    for (const bool isFront : {false, true}) {
        if (isFront) UseFrontCamera();
        for (const std::string& press : {std::string("key camera"), Tap(kShutterButton)}) {
            SCOPED_TRACE(press + (isFront ? ", front camera" : ""));
            SetFault(Fault::kDies);
            phone_.Wait(300);
            EXPECT_TRUE(phone_.IsEnabled(kActionCapture));
            SetFault(Fault::kNone);
            const std::size_t before = phone_.Photos().size();
            phone_.Do({press, "wait 2000"});
            EXPECT_EQ(phone_.Photos().size(), before + 1);
        }
    }
    phone_.Do({"key camera", "wait 70"});
    ASSERT_FALSE(phone_.IsEnabled(kActionCapture));
    SetFault(Fault::kDies);
    phone_.Do({"wait 300", "key camera", "wait 300"});
    ExpectPressTakesPhotograph();
}

TEST_F(CameraTrouble, ThePictureThatSaysThatACameraIsGoneIsNoPhotograph) {
    for (const bool isFront : {false, true}) {
        SCOPED_TRACE(isFront ? "front camera" : "back camera");
        if (isFront) UseFrontCamera();
        const std::size_t before = phone_.Photos().size();
        phone_.Do({isFront ? "unplug secondary" : "unplug primary", "wait 300"});
        (void)phone_.Sounds();
        phone_.Do({"key camera", Tap(kShutterButton), "wait 5000"});
        EXPECT_TRUE(phone_.Sounds().empty());
        EXPECT_EQ(phone_.Photos().size(), before);
        phone_.Do({isFront ? "plug secondary" : "plug primary", "wait 300"});
        ExpectPressTakesPhotograph();
    }
    const std::size_t before = phone_.Photos().size();
    phone_.Do({"key camera", "wait 70", "unplug secondary", "wait 3000"});
    EXPECT_EQ(phone_.Photos().size(), before) << "gone while the front camera counts down";
    phone_.Do({"plug secondary", "wait 300"});
    ExpectPressTakesPhotograph();
}

TEST_F(CameraTrouble, OneThatAnotherProgramHasEndsTheApplicationWithAMessage) {
    phone_.Do("background");
    SetFault(Fault::kBusy);
    phone_.Do({"foreground", "await text Camera", "wait 2900"});
    EXPECT_FALSE(phone_.HasEnded());
    (void)phone_.Try("wait 200");
    EXPECT_TRUE(phone_.HasEnded());
    EXPECT_EQ(phone_.End(), 0);
}

TEST_F(CameraTrouble, APhotographThatIsInterruptedIsNone) {
    for (const auto& [end, begin] :
         {std::pair{"unplug primary", "plug primary"}, std::pair{"background", "foreground"}}) {
        const std::size_t before = phone_.Photos().size();
        phone_.Do({"key camera", end, "wait 6000"});
        EXPECT_EQ(phone_.Photos().size(), before) << end;
        phone_.Do({begin, "await preview", "wait 500"});
        ExpectPressTakesPhotograph();
    }
}

TEST_F(CameraTrouble, ManyPressesAtOnceAreOnePhotograph) {
    phone_.Do({"key camera", "key camera", Tap(kShutterButton), "key camera", "wait 3000"});
    EXPECT_EQ(phone_.Photos().size(), 1u);
    ExpectPressTakesPhotograph();
}

// Photographs of several frames that are not finished, and what is left of them.

/// Still pictures before both cameras: what is stored depends on nothing but the frames.
class SeriesTest : public testing::TestWithParam<CameraType> {
  protected:
    PhoneSetup Setup() const {
        const auto type = static_cast<int>(GetParam());
        return {.primary = back_.Source(),
                .secondary = front_.Source(),
                .registry = {{"CAM_TYPE", std::to_string(type)}}};
    }
    /// Takes one with the front camera, two presses for MIX; the picture that was stored.
    static Picture TakeWithFrontCamera(Phone& phone) {
        phone.Do({Tap(kSwapButton), "await preview", "wait 200", "key camera", "wait 6000"});
        if (phone.Photos().empty()) phone.Do({"key camera", "wait 6000"});
        EXPECT_EQ(phone.Photos().size(), 1u);
        return ReadJpeg(phone.Photos().at(0));
    }
    Picture Undisturbed() const {
        Phone phone(Setup());
        phone.Do({"await preview", "wait 200"});
        return TakeWithFrontCamera(phone);
    }

    static void TakeFirstFrame(Phone& phone) {
        phone.Do("key camera");
        for (int i = 0; i < 100 && phone.Sounds().empty(); ++i) phone.Wait(10);
    }

    Subjects back_{1};
    Subjects front_{1, 640, 480};
    // One phone at a time.
    const Picture undisturbed_ = Undisturbed();
};
INSTANTIATE_TEST_SUITE_P(Types, SeriesTest,
                         testing::Values(CameraType::kAction, CameraType::kQuad, CameraType::kMix),
                         [](const auto& info) { return std::string(NameOf(info.param)); });

TEST_P(SeriesTest, OneThatASwapLeavesIsNoPartOfTheNextPhotograph) {
    Phone phone(Setup());
    phone.Do({"await preview", "wait 200"});
    TakeFirstFrame(phone);
    phone.Do({"unplug primary", "wait 1000", "key camera", "wait 4000"});
    EXPECT_TRUE(phone.Photos().empty());
    ASSERT_TRUE(phone.IsEnabled(kActionCameraSelection));
    phone.Do({"plug primary", "wait 200"});
    const Picture picture = TakeWithFrontCamera(phone);
    ExpectSame(picture, undisturbed_, "photograph");
    EXPECT_FALSE(phone.On([] { return CurrentSettings().IsPreviewEnabled(); }));
}

TEST_P(SeriesTest, OneThatTheCameraSpoilsEndsAfterFiveBadFrames) {
    Fault fault = Fault::kNone;  // the loop thread's
    Phone phone(Setup());
    BreakCameras(phone, fault);
    TakeFirstFrame(phone);
    phone.On([&fault] { fault = Fault::kRubbish; });
    phone.Wait(10000);
    // Only MIX waits for a press for each of its frames.
    for (int i = 0; i < 5 && !phone.IsEnabled(kActionCameraSelection); ++i)
        phone.Do({"key camera", "wait 1000"});
    EXPECT_EQ(phone.Sounds().size(), 5u);
    EXPECT_TRUE(phone.IsEnabled(kActionCameraSelection));
    phone.On([&fault] { fault = Fault::kNone; });
    phone.Wait(2000);
    EXPECT_TRUE(phone.Sounds().empty()) << "nothing is asked for any more";
    EXPECT_TRUE(phone.Photos().empty());
    ExpectSame(TakeWithFrontCamera(phone), undisturbed_, "photograph");
}

}  // namespace
}  // namespace Kivo
