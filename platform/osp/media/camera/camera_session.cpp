#include "osp/media/camera/camera_session.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <chrono>
#include <memory>
#include <utility>

#include "osp/base/trace.h"

// The state changes in Take alone, along the table in camera_states.h. What follows from it holds
// between any two calls:
// - the current device of the slot has been told to open unless the state is kOff, and runs exactly
//   while IsPreviewing;
// - the capture's deadline is set exactly while the state is kCapturing;
// - what the application asked for is answered once: by the device, by the deadline, or by
//   AnswerUnfinished when the device goes;
// - the listener is called from the loop only, never from inside a call of the device or of the
//   application, and may delete the session there. So a task touches nothing after the listener,
//   and what it hands over belongs to the task.

namespace Osp::Media {

namespace {

using Base::ByteBuffer;
using Graphics::Dimension;

constexpr std::array kCaptureSizes = {Dimension{640, 480}, Dimension{800, 480},
                                      Dimension{1280, 960}, Dimension{1600, 960}};
constexpr Dimension kFirstCaptureSize{1280, 960};
constexpr int kMostUndeliveredFrames = 2;
constexpr std::chrono::milliseconds kLongestCapture{2500};

bool Contains(std::span<const Dimension> sizes, const Dimension& size) {
    return std::ranges::find(sizes, size) != sizes.end();
}

}  // namespace

CameraSession::CameraSession(ICameraEventListener& listener, CameraSlot& slot)
    : listener_(listener), slot_(slot) {
    assert(slot_.Exists() && slot_.standIn != nullptr && !PreviewSizes().empty());
    settings_.previewSize = PreviewSizes().back();
    settings_.stillSize = kFirstCaptureSize;
}

CameraSession::~CameraSession() {
    (void)PowerOff();
}

void CameraSession::Take(SessionEvent event) {
    const std::optional<SessionState> next = NextState(state_, event);
    assert(next);
    state_ = *next;
}

result CameraSession::PowerOn() {
    if (!Allows(SessionEvent::kPowerOn)) return result::kInvalidState;
    if (slot_.user != nullptr) return result::kDeviceBusy;
    const result r = Device().Open(*this);
    if (Failed(r)) return r;
    slot_.user = this;
    if (CameraService::IsInstalled()) CameraService::Current().OnPoweredOn(slot_);
    if (!slot_.isConnected) slot_.device->Seek(settings_);
    keepsZoom_ = false;
    Take(SessionEvent::kPowerOn);
    return result::kSuccess;
}

result CameraSession::PowerOff() {
    if (state_ == SessionState::kOff) return result::kSuccess;
    if (IsPreviewing(state_)) (void)StopPreview();
    DropEvents();
    Device().Close();
    slot_.device->StopSeeking();
    slot_.user = nullptr;
    if (!keepsZoom_) settings_.zoomStep = 0;
    Take(SessionEvent::kPowerOff);
    return result::kSuccess;
}

std::span<const Dimension> CameraSession::PreviewSizes() const {
    return slot_.device->PreviewSizes();
}

std::span<const Dimension> CameraSession::CaptureSizes() {
    return kCaptureSizes;
}

result CameraSession::SetPreviewSize(const Dimension& size) {
    if (state_ != SessionState::kOn) return result::kInvalidState;
    if (!Contains(PreviewSizes(), size)) return result::kUnsupported;
    settings_.previewSize = size;
    return result::kSuccess;
}

result CameraSession::SetCaptureSize(const Dimension& size) {
    if (state_ != SessionState::kOn) return result::kInvalidState;
    if (!Contains(kCaptureSizes, size)) return result::kUnsupported;
    settings_.stillSize = size;
    return result::kSuccess;
}

result CameraSession::StartPreview(bool callbacks) {
    if (!Allows(SessionEvent::kStartPreview)) return result::kInvalidState;
    hasCallbacks_ = callbacks;
    hasShownFrame_ = false;
    const result r = Device().Start(settings_);
    if (Failed(r)) return r;
    Take(SessionEvent::kStartPreview);
    if (!slot_.isConnected) Take(SessionEvent::kUnplug);
    return result::kSuccess;
}

result CameraSession::StopPreview() {
    if (!Allows(SessionEvent::kStopPreview)) return result::kInvalidState;
    Device().Stop();
    CancelDeadline();
    DropEvents();
    Take(SessionEvent::kStopPreview);
    return result::kSuccess;
}

void CameraSession::DropEvents() {
    events_.Drop();
    undeliveredFrames_ = 0;
}

void CameraSession::CancelDeadline() {
    Base::EventLoop::Current().CancelTimer(std::exchange(captureDeadline_, 0));
}

result CameraSession::StartAutoFocus() {
    if (!Allows(SessionEvent::kStartFocus)) return result::kInvalidState;
    const result r = Device().StartAutoFocus();
    if (Succeeded(r)) Take(SessionEvent::kStartFocus);
    return r;
}

result CameraSession::Capture() {
    if (!Allows(SessionEvent::kStartCapture)) return result::kInvalidState;
    const result r = Device().RequestStill();
    if (Failed(r)) return r;
    Base::Trace::Mark("capture-begun");
    Take(SessionEvent::kStartCapture);
    assert(captureDeadline_ == 0);
    captureDeadline_ =
        Base::EventLoop::Current().StartTimer(Base::EventClass::kSystem, kLongestCapture, [this] {
            captureDeadline_ = 0;
            // A new stream, so that a picture that comes too late is not taken for the next one.
            Device().Stop();
            const result restarted = Device().Start(settings_);
            Take(SessionEvent::kCaptureDone);
            PostCaptured({}, result::kIo);
            if (Failed(restarted)) OnFailed(restarted);
        });
    return result::kSuccess;
}

result CameraSession::Zoom(int steps) {
    if (state_ == SessionState::kOff) return result::kInvalidState;
    const int step = settings_.zoomStep + steps;
    if (step < 0 || step > kMostZoomSteps) return result::kOutOfRange;
    settings_.zoomStep = step;
    if (IsPreviewing(state_)) Device().Change(settings_);
    return result::kSuccess;
}

result CameraSession::SetFlash(bool on) {
    if (!on) {
        Device().SwitchFlashOff();
        return result::kSuccess;
    }
    return state_ == SessionState::kOff ? result::kInvalidState : Device().SwitchFlashOn();
}

result CameraSession::SetWhiteBalance(CameraWhiteBalance whiteBalance) {
    if (!slot_.device->HasWhiteBalance()) return result::kUnsupported;
    if (whiteBalance > CameraWhiteBalance::kTungsten) return result::kInvalidArgument;
    settings_.whiteBalance = whiteBalance;
    if (IsPreviewing(state_)) Device().Change(settings_);
    return result::kSuccess;
}

bool CameraSession::WantsFrame() const {
    return hasCallbacks_ && undeliveredFrames_ < kMostUndeliveredFrames;
}

void CameraSession::OnFrame(ByteBuffer frame) {
    if (!IsPreviewing(state_) || !WantsFrame()) return;
    ++undeliveredFrames_;
    // The event owns the frame, so that it stays valid when the listener deletes the camera.
    events_.Post([this, swaps = swaps_, owned = std::make_shared<ByteBuffer>(std::move(frame))] {
        --undeliveredFrames_;
        if (swaps != swaps_) return;  // the stand-in's picture is no frame of the device, nor v.v.
        if (!std::exchange(hasShownFrame_, true)) Base::Trace::Mark("preview-first-frame");
        listener_.OnCameraPreviewed(*owned, result::kSuccess);
    });
}

void CameraSession::OnFocused(bool isSharp) {
    if (state_ != SessionState::kFocusing) return;
    Take(SessionEvent::kFocusDone);
    PostFocused(isSharp);
}

void CameraSession::OnStill(ByteBuffer jpeg, result r) {
    if (state_ != SessionState::kCapturing) return;
    CancelDeadline();
    Take(SessionEvent::kCaptureDone);
    PostCaptured(std::move(jpeg), r);
}

void CameraSession::OnFailed(result r) {
    if (!IsPreviewing(state_)) return;
    const SessionState before = state_;
    CancelDeadline();
    Take(SessionEvent::kFail);
    AnswerUnfinished(before);
    PostError(CameraErrorReason::kDeviceFailure);
    events_.Post([this, r] {
        ByteBuffer none;
        listener_.OnCameraPreviewed(none, r);
    });
}

void CameraSession::OnConnectionChanged() {
    assert(state_ != SessionState::kOff);
    const SessionState before = state_;
    if (IsPreviewing(before)) {
        CancelDeadline();
        Take(slot_.isConnected ? SessionEvent::kPlug : SessionEvent::kUnplug);
    }
    SwapDevice();
    if (slot_.isConnected) return;
    AnswerUnfinished(before);
    PostError(CameraErrorReason::kDisconnected);
}

// The slot's current device has changed under a session that is powered on.
void CameraSession::SwapDevice() {
    ++swaps_;
    CameraDevice& previous = slot_.isConnected ? *slot_.standIn : *slot_.device;
    if (IsPreviewing(state_)) previous.Stop();
    previous.Close();
    if (slot_.isConnected) {
        slot_.device->StopSeeking();
    } else {
        slot_.device->Seek(settings_);
    }
    result r = Device().Open(*this);
    if (Succeeded(r) && IsPreviewing(state_)) r = Device().Start(settings_);
    if (Failed(r)) OnFailed(r);
}

void CameraSession::AnswerUnfinished(SessionState state) {
    if (state == SessionState::kFocusing) PostFocused(false);
    if (state == SessionState::kCapturing) PostCaptured({}, result::kIo);
}

void CameraSession::PostError(CameraErrorReason reason) {
    events_.Post([this, reason] { listener_.OnCameraErrorOccurred(reason); });
}

void CameraSession::PostFocused(bool isSharp) {
    events_.Post([this, isSharp] {
        Base::Trace::Mark("focus-done");
        listener_.OnCameraAutoFocused(isSharp);
    });
}

void CameraSession::PostCaptured(ByteBuffer jpeg, result r) {
    events_.Post([this, r, owned = std::make_shared<ByteBuffer>(std::move(jpeg))] {
        keepsZoom_ = true;
        Base::Trace::Mark("capture-delivered");
        listener_.OnCameraCaptured(*owned, r);
    });
}

}  // namespace Osp::Media
