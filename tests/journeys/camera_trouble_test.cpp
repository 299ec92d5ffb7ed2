// Cameras that fail, and what one press of the shutter does afterwards.
#include <gtest/gtest.h>

#include "media/camera_service.h"
#include "support/faulty_camera.h"
#include "support/jpeg.h"
#include "support/phone.h"

namespace Kivo {
namespace {

using namespace Testing;
using Osp::Media::CameraSelection;
using Osp::Media::CameraService;

constexpr int kShutter = 1000;

class CameraTrouble : public testing::Test {
  protected:
    /// Puts a camera that can be told to fail in the place of the good one.
    CameraTrouble() {
        phone_.Do({"await preview", "background"});
        phone_.On([this] {
            auto& device = CameraService::Current().Slot(CameraSelection::kPrimary).device;
            device = std::make_unique<FaultyCamera>(std::move(device), fault_);
        });
        phone_.Do({"foreground", "await preview", "wait 200"});
    }
    void SetFault(Fault fault) {
        phone_.On([this, fault] { fault_ = fault; });
    }
    void ExpectPressTakesPhotograph() {
        SetFault(Fault::kNone);
        EXPECT_TRUE(phone_.IsEnabled(kShutter));
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
    phone_.Do({"key camera", "key camera", "tap 736 228", "key camera", "wait 3000"});
    EXPECT_EQ(phone_.Photos().size(), 1u);
    ExpectPressTakesPhotograph();
}

}  // namespace
}  // namespace Kivo
