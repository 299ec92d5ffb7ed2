#include "osp/media/live/live_camera.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <osp/media/camera.h>

#include "osp/media/camera/camera_service.h"
#include "osp/media/camera/i420.h"
#include "tests/support/camera_fixture.h"

namespace Osp::Media {
namespace {

using namespace std::chrono_literals;

/// What the test makes of a device.
struct Device {
    bool isThere = true;
    bool isStreaming = false;
    result startResult = result::kSuccess;
    int starts = 0;
    VideoMode mode;
    std::shared_ptr<VideoSink> sink;
    std::function<void()> changed;
    std::map<VideoControl, int> controls;  // those that it has
};

class ScriptedSource : public VideoSource {
  public:
    explicit ScriptedSource(Device& device) : device_(device) {}

    bool IsThere() const override { return device_.isThere; }
    void Watch(std::function<void()> changed) override { device_.changed = std::move(changed); }
    std::vector<VideoMode> Modes() const override {
        return {{VideoFormat::kI420, {640, 480}, 30}, {VideoFormat::kI420, {1280, 960}, 30}};
    }
    result Start(const VideoMode& mode, std::shared_ptr<VideoSink> sink) override {
        EXPECT_FALSE(device_.isStreaming) << "started twice";
        ++device_.starts;
        if (Failed(device_.startResult)) return device_.startResult;
        device_.isStreaming = true;
        device_.mode = mode;
        device_.sink = std::move(sink);
        return result::kSuccess;
    }
    void Stop() override {
        device_.isStreaming = false;
        device_.sink.reset();
    }
    bool Has(VideoControl control) const override { return device_.controls.contains(control); }
    result Set(VideoControl control, int value) override {
        if (!Has(control)) return result::kUnsupported;
        device_.controls[control] = value;
        return result::kSuccess;
    }

  private:
    Device& device_;
};

class LiveCameraTest : public testing::Test {
  protected:
    LiveCameraTest() {
        EXPECT_EQ(camera_.Construct(listener_, CameraSelection::kPrimary), result::kSuccess);
    }
    result Begin() {
        const result r = camera_.PowerOn();
        return Failed(r) ? r : camera_.StartPreview(nullptr, true);
    }
    void Deliver(const Graphics::Dimension& size = {1280, 960}) {
        const std::vector<std::uint8_t> bytes(I420Bytes(size), 128);
        VideoPicture picture;
        ASSERT_TRUE(LayOut(VideoFormat::kI420, size, 0, bytes, picture));
        if (device_.sink) device_.sink->OnPicture(picture);
        test_.Settle();
    }
    void SetThere(bool isThere) {
        device_.isThere = isThere;
        device_.changed();
        test_.Settle();
    }
    bool IsConnected() { return camera_.IsConnected(); }

    Testing::TestLoop test_;
    Device device_;
    NotingListener listener_{test_};
    CameraService service_{std::make_unique<LiveCamera>("live", CameraSelection::kPrimary,
                                                        std::make_unique<ScriptedSource>(device_)),
                           nullptr};
    CameraService::Installed installed_{service_};
    Camera camera_;
};

TEST_F(LiveCameraTest, StaysConfiguredForSomeSecondsWhileItIsOff) {
    ASSERT_EQ(Begin(), result::kSuccess);
    EXPECT_EQ(device_.mode.size, (Graphics::Dimension{1280, 960}));
    Deliver();
    EXPECT_EQ(listener_.TakeNotes(), (Notes{"frame"}));
    ASSERT_EQ(camera_.PowerOff(), result::kSuccess);
    Deliver();
    test_.Pass(4s);
    EXPECT_EQ(listener_.TakeNotes(), Notes{}) << "of a camera that is off";
    ASSERT_EQ(Begin(), result::kSuccess);
    Deliver();
    EXPECT_EQ(listener_.TakeNotes(), (Notes{"frame"}));
    EXPECT_EQ(device_.starts, 1) << "nothing was negotiated anew";
    ASSERT_EQ(camera_.PowerOff(), result::kSuccess);
    test_.Pass(6s);
    EXPECT_FALSE(device_.isStreaming);
}

TEST_F(LiveCameraTest, IsLetGoAtOnceInTheBackgroundAndByTheOtherCamera) {
    ASSERT_EQ(Begin(), result::kSuccess);
    service_.SetForeground(false);  // the application hears of it later
    EXPECT_TRUE(device_.isStreaming);
    ASSERT_EQ(camera_.PowerOff(), result::kSuccess);
    EXPECT_FALSE(device_.isStreaming);
    service_.SetForeground(true);
    ASSERT_EQ(Begin(), result::kSuccess);
    ASSERT_EQ(camera_.PowerOff(), result::kSuccess);
    EXPECT_TRUE(device_.isStreaming);
    service_.OnPoweredOn(service_.Slot(CameraSelection::kSecondary));
    EXPECT_FALSE(device_.isStreaming);
}

TEST_F(LiveCameraTest, OneThatBringsNoWholePictureIsNotThereUntilItDoes) {
    ASSERT_EQ(Begin(), result::kSuccess);
    Deliver();
    for (int i = 0; i < 3; ++i) {
        test_.Pass(1900ms);
        Deliver();
    }
    EXPECT_TRUE(IsConnected());
    test_.Pass(1900ms);
    device_.sink->OnDamage();
    listener_.TakeNotes();
    test_.Pass(400ms);
    EXPECT_FALSE(IsConnected());
    EXPECT_EQ(listener_.TakeNotes().front(), "disconnected");
    test_.Pass(1100ms);
    ASSERT_TRUE(device_.isStreaming) << "on trial";
    EXPECT_FALSE(IsConnected());
    Deliver();
    EXPECT_TRUE(IsConnected());
    const int starts = device_.starts;
    Deliver();
    test_.Pass(200ms);
    EXPECT_EQ(device_.starts, starts) << "the stream of the trial goes on";
    EXPECT_EQ(camera_.Capture(), result::kSuccess);
    Deliver();
    EXPECT_FALSE(listener_.still.empty());
}

TEST_F(LiveCameraTest, ThatHasBeenUnpluggedOrEndsByItselfComesBack) {
    ASSERT_EQ(Begin(), result::kSuccess);
    Deliver();
    ASSERT_EQ(camera_.Capture(), result::kSuccess);
    SetThere(false);
    EXPECT_FALSE(device_.isStreaming);
    EXPECT_EQ(listener_.TakeAnswers(), (Notes{"captured: io", "disconnected"}));
    SetThere(true);
    Deliver();
    EXPECT_TRUE(IsConnected());
    device_.sink->OnEnded();
    test_.Settle();
    EXPECT_FALSE(IsConnected());

    // Nobody waits for it while the camera is off: nothing is tried then.
    ASSERT_EQ(camera_.PowerOff(), result::kSuccess);
    const int starts = device_.starts;
    test_.Pass(10s);
    EXPECT_EQ(device_.starts, starts);
    ASSERT_EQ(Begin(), result::kSuccess);
    Deliver();
    EXPECT_TRUE(IsConnected());

    // What comes back while the camera is off is there when it is switched on.
    ASSERT_EQ(camera_.PowerOff(), result::kSuccess);
    SetThere(false);
    SetThere(true);
    EXPECT_TRUE(IsConnected());
    ASSERT_EQ(Begin(), result::kSuccess);
    Deliver();
    EXPECT_EQ(listener_.TakeNotes().back(), "frame");
}

TEST_F(LiveCameraTest, OnlyABusyDeviceFailsToStart) {
    device_.startResult = result::kDeviceBusy;
    EXPECT_EQ(Begin(), result::kDeviceBusy);
    ASSERT_EQ(camera_.PowerOff(), result::kSuccess);
    device_.startResult = result::kIo;
    EXPECT_EQ(Begin(), result::kSuccess);
    test_.Settle();
    EXPECT_FALSE(IsConnected());
    device_.startResult = result::kSuccess;
    test_.Pass(1100ms);
    Deliver();
    EXPECT_TRUE(IsConnected());
}

TEST_F(LiveCameraTest, DoesToPicturesWhatTheDeviceDoesNot) {
    ASSERT_EQ(Begin(), result::kSuccess);
    EXPECT_EQ(camera_.StartAutoFocus(), result::kUnsupported);
    EXPECT_EQ(camera_.SetFlash(true), result::kUnsupported);
    EXPECT_EQ(camera_.SetFlash(false), result::kSuccess);
    for (const auto control : {VideoControl::kZoom, VideoControl::kWhiteBalance,
                               VideoControl::kFocus, VideoControl::kFlash}) {
        device_.controls[control] = -1;
    }
    EXPECT_EQ(camera_.ZoomIn(), result::kSuccess);
    EXPECT_EQ(camera_.SetWhiteBalance(CameraWhiteBalance::kTungsten), result::kSuccess);
    EXPECT_EQ(camera_.SetFlash(true), result::kSuccess);
    EXPECT_EQ(device_.controls[VideoControl::kZoom], 1);
    EXPECT_EQ(device_.controls[VideoControl::kWhiteBalance], 4);
    EXPECT_EQ(device_.controls[VideoControl::kFlash], 1);
    Deliver();
    const std::string grey = listener_.frame;
    EXPECT_EQ(grey.find_first_not_of('\x80'), std::string::npos) << "balanced twice";
    EXPECT_EQ(camera_.StartAutoFocus(), result::kSuccess);
    test_.Settle();
    EXPECT_EQ(listener_.TakeNotes(), (Notes{"frame", "sharp"}));
    ASSERT_EQ(camera_.PowerOff(), result::kSuccess);
    EXPECT_EQ(device_.controls[VideoControl::kFlash], 0);
}

}  // namespace
}  // namespace Osp::Media
