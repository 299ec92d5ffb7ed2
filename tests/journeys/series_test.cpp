// Photographs of several frames that are not finished, and what is left of them.
#include <gtest/gtest.h>

#include "app/model/action_ids.h"
#include "osp/media/camera/camera_service.h"
#include "tests/support/camera_screen.h"
#include "tests/support/faulty_camera.h"
#include "tests/support/jpeg.h"
#include "tests/support/main_form_access.h"
#include "tests/support/phone.h"
#include "tests/support/subjects.h"

namespace Kivo {
namespace {

using namespace Testing;
using Osp::Media::CameraSelection;
using Osp::Media::CameraService;

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
        if (phone.Photos().size() != 1) {
            ADD_FAILURE() << phone.Photos().size() << " photographs";
            return Picture(1, 1);
        }
        return ReadJpeg(phone.Photos()[0]);
    }
    Picture Undisturbed() const {
        Phone phone(Setup());
        phone.Do({"await preview", "wait 200"});
        return TakeWithFrontCamera(phone);
    }

    static void AwaitFirstFrame(Phone& phone) {
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
    AwaitFirstFrame(phone);
    phone.Do({"unplug primary", "wait 1000", "key camera", "wait 4000"});
    EXPECT_TRUE(phone.Photos().empty());
    ASSERT_TRUE(phone.IsEnabled(kActionCameraSelection));
    phone.Do({"plug primary", "wait 200"});
    const Picture picture = TakeWithFrontCamera(phone);
    ExpectSame(picture, undisturbed_, "photograph");
    EXPECT_FALSE(phone.On([] { return CurrentSettings().IsPreviewEnabled(); }));
}

TEST_P(SeriesTest, OneThatTheCameraSpoilsEndsAfterFiveBadFrames) {
    Phone phone(Setup());
    Fault fault = Fault::kNone;  // the loop thread's
    phone.Do({"await preview", "background"});
    phone.On([&fault] {
        auto& device = CameraService::Current().Slot(CameraSelection::kPrimary).device;
        device = std::make_unique<FaultyCamera>(std::move(device), fault);
    });
    phone.Do({"foreground", "await preview", "wait 200"});
    AwaitFirstFrame(phone);
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
