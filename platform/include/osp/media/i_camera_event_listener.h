// Receives what a camera delivers.
#pragma once

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>
#include <osp/media/camera_error_reason.h>

namespace Osp::Media {

/// All calls come from the loop, never from inside a call on the camera, and none that was on its
/// way comes after StopPreview or PowerOff. Every method of the camera may be called here, and the
/// camera may be deleted. Buffers belong to the camera and stay valid until the method returns,
/// whatever it does to the camera; they may be written to.
class ICameraEventListener {
  public:
    virtual ~ICameraEventListener() = default;

    /// Answers StartAutoFocus, once. `completeCondition` tells whether the picture is sharp.
    virtual void OnCameraAutoFocused(bool completeCondition) = 0;

    /// Answers Capture, once and within 2.5 seconds. On success `capturedData` is one JPEG of the
    /// capture resolution; after a failure `r` is its code and `capturedData` is empty. The preview
    /// goes on.
    virtual void OnCameraCaptured(Base::ByteBuffer& capturedData, result r) = 0;

    /// One preview frame of the preview resolution, in the preview format. After a failure of the
    /// device `r` is its code and `previewedData` is empty.
    virtual void OnCameraPreviewed(Base::ByteBuffer& previewedData, result r) = 0;

    /// A camera that is on has been unplugged or has stopped by itself; see the reasons.
    virtual void OnCameraErrorOccurred(CameraErrorReason reason) = 0;
};

}  // namespace Osp::Media
