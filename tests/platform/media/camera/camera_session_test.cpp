// What an application asks of a session, and what it is answered.
#include <optional>

#include "tests/platform/media/camera/camera_session_fixture.h"

namespace Osp::Media {
namespace {

using namespace std::chrono_literals;
using State = SessionState;

constexpr State kStates[] = {State::kOff,      State::kOn,        State::kPreviewing,
                             State::kFocusing, State::kCapturing, State::kDisconnected};

constexpr Graphics::Dimension kSize{640, 480};

struct Request {
    const char* name;
    result (*make)(CameraSession&);
    const char* allowed;  // one letter for each of kStates: y or n
    std::optional<State> leadsTo = std::nullopt;
};

const Request kRequests[] = {
    {"PowerOn", [](CameraSession& s) { return s.PowerOn(); }, "ynnnnn", State::kOn},
    {"PowerOff", [](CameraSession& s) { return s.PowerOff(); }, "yyyyyy", State::kOff},
    {"StartPreview", [](CameraSession& s) { return s.StartPreview(true); }, "nynnnn",
     State::kPreviewing},
    {"StopPreview", [](CameraSession& s) { return s.StopPreview(); }, "nnyyyy", State::kOn},
    {"StartAutoFocus", [](CameraSession& s) { return s.StartAutoFocus(); }, "nnynnn",
     State::kFocusing},
    {"Capture", [](CameraSession& s) { return s.Capture(); }, "nnynnn", State::kCapturing},
    {"SetPreviewSize", [](CameraSession& s) { return s.SetPreviewSize(kSize); }, "nynnnn"},
    {"SetCaptureSize", [](CameraSession& s) { return s.SetCaptureSize(kSize); }, "nynnnn"},
    {"Zoom", [](CameraSession& s) { return s.Zoom(1); }, "nyyyyy"},
    {"SetFlash", [](CameraSession& s) { return s.SetFlash(false); }, "yyyyyy"},
    {"SetWhiteBalance",
     [](CameraSession& s) { return s.SetWhiteBalance(CameraWhiteBalance::kCloudy); }, "yyyyyy"},
};

TEST_F(CameraSessionTest, EveryStateAllowsWhatItShouldAndRefusesTheRest) {
    for (const Request& request : kRequests) {
        for (std::size_t i = 0; i < std::size(kStates); ++i) {
            SCOPED_TRACE(std::string(request.name) + " in state " + std::to_string(i));
            Bring(kStates[i]);
            const StreamSettings before = session_->Settings();
            const bool isAllowed = request.allowed[i] == 'y';
            EXPECT_EQ(request.make(*session_),
                      isAllowed ? result::kSuccess : result::kInvalidState);
            EXPECT_EQ(session_->State(),
                      isAllowed ? request.leadsTo.value_or(kStates[i]) : kStates[i]);
            EXPECT_TRUE(isAllowed || session_->Settings() == before);
            SetConnected(true);
            Renew();
            EXPECT_EQ(device_->client, nullptr) << "left open";
        }
    }
}

TEST_F(CameraSessionTest, WhatTheDeviceRefusesChangesNothing) {
    Bring(State::kPreviewing);
    device_->focusResult = device_->stillResult = device_->flashResult = result::kUnsupported;
    device_->hasWhiteBalance = false;
    EXPECT_EQ(session_->StartAutoFocus(), result::kUnsupported);
    EXPECT_EQ(session_->Capture(), result::kUnsupported);
    EXPECT_EQ(session_->SetFlash(true), result::kUnsupported);
    EXPECT_EQ(session_->SetWhiteBalance(CameraWhiteBalance::kSunny), result::kUnsupported);
    EXPECT_EQ(session_->Settings().whiteBalance, CameraWhiteBalance::kAuto);
    EXPECT_EQ(session_->State(), State::kPreviewing);
    test_.Pass(3s);
    EXPECT_TRUE(listener_.TakeNotes().empty());

    EXPECT_EQ(session_->StopPreview(), result::kSuccess);
    EXPECT_EQ(session_->SetPreviewSize({1, 1}), result::kUnsupported);
    EXPECT_EQ(session_->SetCaptureSize({1, 1}), result::kUnsupported);
    device_->startResult = result::kIo;
    EXPECT_EQ(session_->StartPreview(true), result::kIo);
    EXPECT_EQ(session_->State(), State::kOn);
    EXPECT_EQ(session_->PowerOff(), result::kSuccess);
    EXPECT_EQ(session_->SetFlash(true), result::kInvalidState);
    device_->openResult = result::kDeviceBusy;
    EXPECT_EQ(session_->PowerOn(), result::kDeviceBusy);
    EXPECT_EQ(session_->State(), State::kOff);
}

TEST_F(CameraSessionTest, OneSessionAtATimeHasTheDevice) {
    Bring(State::kOn);
    CameraSession other(listener_, slot_);
    EXPECT_EQ(other.PowerOn(), result::kDeviceBusy);
    EXPECT_EQ(session_->PowerOff(), result::kSuccess);
    EXPECT_EQ(other.PowerOn(), result::kSuccess);
    EXPECT_EQ(session_->PowerOff(), result::kSuccess) << "off already";
    EXPECT_EQ(session_->PowerOn(), result::kDeviceBusy);
}

TEST_F(CameraSessionTest, AnswersComeFromTheLoopOnceAndInOrder) {
    Bring(State::kFocusing);
    device_->client->OnFocused(true);
    device_->client->OnFocused(true);
    EXPECT_EQ(session_->State(), State::kPreviewing);
    EXPECT_EQ(session_->Capture(), result::kSuccess);
    DeliverFrame();
    device_->client->OnStill(SomeBytes("jpeg"), result::kSuccess);
    device_->client->OnStill(SomeBytes("another"), result::kSuccess);
    EXPECT_TRUE(listener_.TakeNotes().empty()) << "called from inside the device's call";
    EXPECT_EQ(Settled(), (Notes{"sharp", "frame", "captured"}));
    EXPECT_EQ(listener_.still, "jpeg");
    EXPECT_EQ(listener_.frame, "abc");
    test_.Pass(5s);
    EXPECT_TRUE(listener_.TakeNotes().empty());
}

TEST_F(CameraSessionTest, StoppingDropsWhatWasOnItsWay) {
    result (*const ends[])(CameraSession&) = {
        [](CameraSession& s) { return s.StopPreview(); },
        [](CameraSession& s) { return s.PowerOff(); },
    };
    for (const auto end : ends) {
        Bring(State::kCapturing);
        CameraDeviceClient* const client = device_->client;
        DeliverFrame();
        client->OnStill(SomeBytes("jpeg"), result::kSuccess);
        EXPECT_EQ(end(*session_), result::kSuccess);
        client->OnFrame(SomeBytes("late"));
        client->OnStill(SomeBytes("late"), result::kSuccess);
        client->OnFocused(true);
        client->OnFailed(result::kIo);
        test_.Pass(5s);
        EXPECT_TRUE(listener_.TakeNotes().empty());
        Renew();
    }
    Bring(State::kCapturing);
    DeliverFrame();
    session_.reset();
    EXPECT_FALSE(device_->isRunning);
    test_.Pass(5s);
    EXPECT_TRUE(listener_.TakeNotes().empty());
}

TEST_F(CameraSessionTest, ACaptureThatNeverComesFailsAfter2500Milliseconds) {
    Bring(State::kPreviewing);
    ASSERT_EQ(session_->Capture(), result::kSuccess);
    test_.Pass(2499ms);
    EXPECT_TRUE(listener_.TakeNotes().empty());
    test_.Pass(1ms);
    EXPECT_EQ(listener_.TakeNotes(), (Notes{"captured: io"}));
    EXPECT_EQ(listener_.still, "");
    EXPECT_EQ(device_->startCount, 2) << "the picture that comes too late belongs to an old stream";
    EXPECT_EQ(session_->State(), State::kPreviewing);

    TakePhotograph();
    EXPECT_EQ(Settled(), (Notes{"captured"}));

    // The next deadline is its own.
    test_.Pass(1s);
    ASSERT_EQ(session_->Capture(), result::kSuccess);
    device_->startResult = result::kIo;
    test_.Pass(2499ms);
    EXPECT_TRUE(listener_.TakeNotes().empty());
    test_.Pass(1ms);
    EXPECT_EQ(listener_.TakeNotes(), (Notes{"captured: io", "device failure", "frame: io"}));
    EXPECT_EQ(session_->State(), State::kOn);
}

TEST_F(CameraSessionTest, TwoFramesAtMostWaitForTheApplication) {
    Bring(State::kPreviewing);
    const auto deliverThree = [this] {
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(device_->client->WantsFrame(), i < 2) << i;
            DeliverFrame();
        }
    };
    deliverThree();
    EXPECT_EQ(Settled(), (Notes{"frame", "frame"}));
    // What fails or is dropped leaves the count right for the next stream.
    deliverThree();
    device_->Fail(result::kIo);
    EXPECT_EQ(Settled(), (Notes{"frame", "frame", "device failure", "frame: io"}));
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(session_->StartPreview(true), result::kSuccess);
        deliverThree();
        ASSERT_EQ(session_->StopPreview(), result::kSuccess);
    }
    EXPECT_TRUE(Settled().empty());
    ASSERT_EQ(session_->StartPreview(false), result::kSuccess);
    EXPECT_FALSE(device_->client->WantsFrame());
    DeliverFrame();
    EXPECT_TRUE(Settled().empty()) << "callbacks are off";
}

TEST_F(CameraSessionTest, ZoomHasSevenStepsAndSurvivesOnlyThePowerCycleAfterACapture) {
    Bring(State::kPreviewing);
    EXPECT_EQ(session_->Zoom(-1), result::kOutOfRange);
    for (int step = 1; step <= 6; ++step) EXPECT_EQ(session_->Zoom(1), result::kSuccess);
    EXPECT_EQ(session_->Zoom(1), result::kOutOfRange);
    const auto cycle = [this] {
        EXPECT_EQ(session_->PowerOff(), result::kSuccess);
        EXPECT_EQ(session_->PowerOn(), result::kSuccess);
        EXPECT_EQ(session_->StartPreview(true), result::kSuccess);
        return device_->settings.zoomStep;
    };
    TakePhotograph();
    EXPECT_EQ(cycle(), 6);
    TakePhotograph(result::kIo);
    EXPECT_EQ(cycle(), 6) << "a failed capture is restarted after as well";
    ASSERT_EQ(session_->Capture(), result::kSuccess);
    EXPECT_EQ(cycle(), 0) << "the capture has not called back";
    EXPECT_EQ(session_->Zoom(1), result::kSuccess);
    EXPECT_EQ(cycle(), 0);
}

}  // namespace
}  // namespace Osp::Media
