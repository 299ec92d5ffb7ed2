// A session with a scripted device and a scripted stand-in.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <utility>

#include "osp/media/camera/camera_session.h"
#include "tests/support/camera_fixture.h"
#include "tests/support/scripted_device.h"
#include "tests/support/test_loop.h"

namespace Osp::Media {

class CameraSessionTest : public testing::Test {
  protected:
    CameraSessionTest() {
        slot_.device = std::make_unique<ScriptedDevice>("device");
        slot_.standIn = std::make_unique<ScriptedDevice>("stand-in");
        device_ = static_cast<ScriptedDevice*>(slot_.device.get());
        standIn_ = static_cast<ScriptedDevice*>(slot_.standIn.get());
        standIn_->focusResult = result::kUnsupported;
        standIn_->flashResult = result::kUnsupported;
        Renew();
    }
    void Renew() {
        session_.reset();
        session_ = std::make_unique<CameraSession>(listener_, slot_);
    }

    void Bring(SessionState state) {
        if (state == SessionState::kOff) return;
        ASSERT_EQ(session_->PowerOn(), result::kSuccess);
        if (state == SessionState::kOn) return;
        ASSERT_EQ(session_->StartPreview(true), result::kSuccess);
        if (state == SessionState::kFocusing) {
            ASSERT_EQ(session_->StartAutoFocus(), result::kSuccess);
        }
        if (state == SessionState::kCapturing) {
            ASSERT_EQ(session_->Capture(), result::kSuccess);
        }
        if (state == SessionState::kDisconnected) SetConnected(false);
        ASSERT_EQ(session_->State(), state);
        test_.Settle();
        listener_.TakeNotes();
    }
    /// As the service does it.
    void SetConnected(bool isConnected) {
        if (std::exchange(slot_.isConnected, isConnected) == isConnected) return;
        if (slot_.user != nullptr) slot_.user->OnConnectionChanged();
    }
    void DeliverFrame() { device_->client->OnFrame(SomeBytes("abc")); }
    Notes Settled() {
        test_.Settle();
        return listener_.TakeNotes();
    }
    /// One photograph from a running preview.
    void TakePhotograph(result outcome = result::kSuccess) {
        ASSERT_EQ(session_->Capture(), result::kSuccess);
        device_->client->OnStill(SomeBytes("jpeg"), outcome);
        test_.Settle();
    }

    Testing::TestLoop test_;
    CameraSlot slot_;
    ScriptedDevice* device_;
    ScriptedDevice* standIn_;
    NotingListener listener_{test_};
    std::unique_ptr<CameraSession> session_;
};

}  // namespace Osp::Media
