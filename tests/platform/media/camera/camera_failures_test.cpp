// What a session makes of a device that goes away.
#include "tests/platform/media/camera/camera_session_fixture.h"

namespace Osp::Media {
namespace {

using namespace std::chrono_literals;
using State = SessionState;

TEST_F(CameraSessionTest, AnUnpluggedCameraPreviewsItsStandInUntilItIsBack) {
    const std::pair<State, Notes> cases[] = {
        {State::kPreviewing, {"disconnected"}},
        {State::kFocusing, {"blurred", "disconnected"}},
        {State::kCapturing, {"captured: io", "disconnected"}},
    };
    for (const auto& [state, expected] : cases) {
        Bring(state);
        ASSERT_EQ(session_->Zoom(1), result::kSuccess);
        SetConnected(false);
        EXPECT_EQ(Settled(), expected);
        EXPECT_EQ(device_->client, nullptr);
        EXPECT_TRUE(standIn_->isRunning);
        standIn_->client->OnFrame(SomeBytes("grey"));
        EXPECT_EQ(Settled(), (Notes{"frame"}));
        EXPECT_EQ(session_->Zoom(1), result::kSuccess);
        EXPECT_EQ(session_->Capture(), result::kInvalidState);
        EXPECT_EQ(session_->SetFlash(true), result::kUnsupported);

        SetConnected(true);
        EXPECT_EQ(standIn_->client, nullptr);
        EXPECT_TRUE(device_->isRunning);
        EXPECT_EQ(device_->settings.zoomStep, 2);
        EXPECT_EQ(session_->State(), State::kPreviewing);
        test_.Pass(3s);
        EXPECT_TRUE(listener_.TakeNotes().empty()) << "nothing is left of the old capture";
        TakePhotograph();
        EXPECT_EQ(Settled(), (Notes{"captured"}));
        Renew();
    }
}

TEST_F(CameraSessionTest, ACameraCanBeStartedWhileUnpluggedAndUnpluggedWhileStopped) {
    SetConnected(false);
    Bring(State::kOn);
    EXPECT_EQ(session_->StartPreview(true), result::kSuccess);
    EXPECT_EQ(session_->State(), State::kDisconnected);
    EXPECT_EQ(session_->StopPreview(), result::kSuccess);
    SetConnected(true);
    EXPECT_TRUE(Settled().empty());
    EXPECT_EQ(session_->StartPreview(true), result::kSuccess);
    EXPECT_TRUE(device_->isRunning);
    EXPECT_EQ(session_->StopPreview(), result::kSuccess);
    SetConnected(false);
    EXPECT_EQ(Settled(), (Notes{"disconnected"}));

    // Another program has taken it in the meantime.
    EXPECT_EQ(session_->StartPreview(true), result::kSuccess);
    device_->openResult = result::kDeviceBusy;
    SetConnected(true);
    EXPECT_EQ(session_->State(), State::kOn);
    EXPECT_EQ(Settled(), (Notes{"device failure", "frame: failure"}));
}

TEST_F(CameraSessionTest, ADeviceThatFailsAnswersWhatWasAskedAndCanBeStartedAgain) {
    const std::pair<State, Notes> cases[] = {
        {State::kPreviewing, {"device failure", "frame: io"}},
        {State::kFocusing, {"blurred", "device failure", "frame: io"}},
        {State::kCapturing, {"captured: io", "device failure", "frame: io"}},
    };
    for (const auto& [state, expected] : cases) {
        Bring(state);
        device_->Fail(result::kIo);
        EXPECT_EQ(session_->State(), State::kOn);
        EXPECT_EQ(Settled(), expected);
        EXPECT_EQ(listener_.frame, "");
        EXPECT_EQ(session_->StartPreview(true), result::kSuccess);
        TakePhotograph();
        EXPECT_EQ(Settled(), (Notes{"captured"}));
        Renew();
    }
}

TEST_F(CameraSessionTest, TheListenerMayDeleteTheCameraInEveryCallback) {
    void (*const causes[])(ScriptedDevice&) = {
        [](ScriptedDevice& d) {
            d.client->OnFrame(SomeBytes("abc"));
            d.client->OnFrame(SomeBytes("def"));
        },
        [](ScriptedDevice& d) { d.client->OnFocused(true); },
        [](ScriptedDevice& d) { d.Fail(result::kIo); },
    };
    for (const auto cause : causes) {
        Bring(State::kFocusing);
        listener_.then = [this] { session_.reset(); };
        cause(*device_);
        EXPECT_EQ(Settled().size(), 1u) << "heard something of a camera that is gone";
        EXPECT_EQ(session_, nullptr);
        listener_.then = [] {};
        Renew();
    }
    EXPECT_EQ(listener_.frame, "abc") << "read after the camera was deleted";
    Bring(State::kCapturing);
    listener_.then = [this] { session_.reset(); };
    device_->client->OnStill(SomeBytes("jpeg"), result::kSuccess);
    EXPECT_EQ(Settled(), (Notes{"captured"}));
    EXPECT_EQ(listener_.still, "jpeg");
}

}  // namespace
}  // namespace Osp::Media
