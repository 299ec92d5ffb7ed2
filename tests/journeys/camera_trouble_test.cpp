// Cameras that fail, and what one press of the shutter does afterwards.
#include <gtest/gtest.h>

#include "app/model/action_ids.h"
#include "osp/media/camera/camera_service.h"
#include "tests/support/camera_screen.h"
#include "tests/support/faulty_camera.h"
#include "tests/support/jpeg.h"
#include "tests/support/phone.h"

namespace Kivo {
namespace {

using namespace Testing;
using Osp::Media::CameraSelection;
using Osp::Media::CameraService;

class CameraTrouble : public testing::Test {
  protected:
    /// Puts a camera that can be told to fail in the place of the good one.
    CameraTrouble() {
        phone_.Do({"await preview", "background"});
        phone_.On([this] {
            for (const auto selection : {CameraSelection::kPrimary, CameraSelection::kSecondary}) {
                auto& device = CameraService::Current().Slot(selection).device;
                device = std::make_unique<FaultyCamera>(std::move(device), fault_);
            }
        });
        phone_.Do({"foreground", "await preview", "wait 200"});
    }
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

TEST_F(CameraTrouble, BadPicturesAreNoPhotographs) {
    for (const Fault fault : {Fault::kSilent, Fault::kRubbish, Fault::kTruncated, Fault::kLate}) {
        SCOPED_TRACE(static_cast<int>(fault));
        SetFault(fault);
        const std::size_t before = phone_.Photos().size();
        phone_.Do({"key camera", "wait 6000"});
        EXPECT_EQ(phone_.Photos().size(), before);
        ExpectPressTakesPhotograph();
    }
}

TEST_F(CameraTrouble, OneThatIsDeliveredTwiceIsStoredOnce) {
    SetFault(Fault::kTwice);
    phone_.Do({"key camera", "wait 6000"});
    EXPECT_EQ(phone_.Photos().size(), 1u);
    ExpectPressTakesPhotograph();
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

TEST_F(CameraTrouble, OneThatIsPulledWhileItTakesAPhotographFailsThatOneOnly) {
    phone_.Do({"key camera", "unplug primary", "wait 6000"});
    EXPECT_TRUE(phone_.Photos().empty());
    phone_.Do({"plug primary", "wait 500"});
    ExpectPressTakesPhotograph();
}

TEST_F(CameraTrouble, ManyPressesAtOnceAreOnePhotograph) {
    phone_.Do({"key camera", "key camera", Tap(kShutterButton), "key camera", "wait 3000"});
    EXPECT_EQ(phone_.Photos().size(), 1u);
    ExpectPressTakesPhotograph();
}

}  // namespace
}  // namespace Kivo
