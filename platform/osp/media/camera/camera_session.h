// One application's use of one camera.
#pragma once

#include <span>

#include <osp/media/camera.h>

#include "osp/base/event_loop.h"
#include "osp/base/event_source.h"
#include "osp/media/camera/camera_device.h"
#include "osp/media/camera/camera_service.h"
#include "osp/media/camera/camera_states.h"

namespace Osp::Media {

/// Keeps the rules of Camera, whose methods it has: refuses what the state does not allow, turns
/// what the device delivers into events of the application, answers for a device that does not,
/// and puts the slot's stand-in in the place of a device that has been unplugged.
class CameraSession : private CameraDeviceClient, private CameraSlot::User {
  public:
    CameraSession(ICameraEventListener& listener, CameraSlot& slot);
    ~CameraSession() override;

    result PowerOn();
    result PowerOff();
    SessionState State() const { return state_; }
    bool IsConnected() const { return slot_.isConnected; }

    std::span<const Graphics::Dimension> PreviewSizes() const;
    static std::span<const Graphics::Dimension> CaptureSizes();
    result SetPreviewSize(const Graphics::Dimension& size);
    result SetCaptureSize(const Graphics::Dimension& size);
    const StreamSettings& Settings() const { return settings_; }

    result StartPreview(bool callbacks);
    result StopPreview();
    result StartAutoFocus();
    result Capture();
    result Zoom(int steps);
    result SetFlash(bool on);
    result SetWhiteBalance(CameraWhiteBalance whiteBalance);

  private:
    bool WantsFrame() const override;
    void OnFrame(Base::ByteBuffer frame) override;
    void OnFocused(bool isSharp) override;
    void OnStill(Base::ByteBuffer jpeg, result r) override;
    void OnFailed(result r) override;
    void OnConnectionChanged() override;

    bool Allows(SessionEvent event) const { return NextState(state_, event).has_value(); }
    void Take(SessionEvent event);
    CameraDevice& Device() { return slot_.Current(); }
    void DropEvents();
    void CancelDeadline();
    void SwapDevice();
    void AnswerUnfinished(SessionState state);
    void PostError(CameraErrorReason reason);
    void PostFocused(bool isSharp);
    void PostCaptured(Base::ByteBuffer jpeg, result r);

    ICameraEventListener& listener_;
    CameraSlot& slot_;
    SessionState state_ = SessionState::kOff;
    StreamSettings settings_;
    bool hasCallbacks_ = false;
    bool keepsZoom_ = false;  // a capture has called back since power-on
    bool hasShownFrame_ = false;
    int undeliveredFrames_ = 0;
    unsigned swaps_ = 0;  // of device and stand-in; tells whose frame an undelivered one is
    Base::EventLoop::TimerId captureDeadline_ = 0;
    Base::EventSource events_;
};

}  // namespace Osp::Media
