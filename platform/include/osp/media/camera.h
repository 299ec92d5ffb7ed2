// One of the device's cameras.
#pragma once

#include <memory>
#include <vector>

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>
#include <osp/graphics/dimension.h>
#include <osp/media/camera_selection.h>
#include <osp/media/camera_state.h>
#include <osp/media/camera_white_balance.h>
#include <osp/media/i_camera_event_listener.h>
#include <osp/media/pixel_format.h>

namespace Osp::Media {

class CameraSession;

/// Off, on, previewing; while previewing it focuses or captures, one of them at a time. What a
/// state does not allow is refused with kInvalidState and changes nothing. Loop thread only. An
/// unplugged camera keeps working: it previews a picture that says so, its captures fail, and the
/// real picture is back when the device is. Destroying the camera powers it off.
class Camera {
  public:
    Camera();
    ~Camera();
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;

    /// `listener` is not owned and outlives the camera. kObjectNotFound, leaving the camera
    /// unconstructed, where the device has no such camera.
    result Construct(ICameraEventListener& listener, CameraSelection selection);

    /// kDeviceBusy when another program, or another Camera, uses the device.
    result PowerOn();
    /// Stops the preview first; does nothing when off already. Resets the zoom to 1x unless a
    /// capture has called back since PowerOn, so that the power cycle after a photograph keeps the
    /// picture as it was.
    result PowerOff();
    bool IsPoweredOn() const;
    CameraState GetState() const;
    /// False while the device is unplugged, and from then on every frame is the picture that says
    /// so; true again before the first real frame. False before Construct.
    bool IsConnected() const;

    /// New lists, the caller's; null before Construct. The preview sizes end with 800 x 480 on the
    /// primary and 640 x 480 on the secondary camera; the capture sizes are in ascending order and
    /// every camera offers 640 x 480, 800 x 480, 1280 x 960 and 1600 x 960.
    std::vector<Graphics::Dimension>* GetSupportedPreviewResolutionListN() const;
    std::vector<Graphics::Dimension>* GetSupportedCaptureResolutionListN() const;

    /// The format of the pictures is chosen while powered on and not previewing. kUnsupported for
    /// sizes that are not in the list and for other formats than kYuv420Planar of preview frames
    /// and kJpeg of captures. Until set, the preview has the last size of its list and captures
    /// have 1280 x 960; power-off keeps what was set.
    result SetPreviewResolution(const Graphics::Dimension& resolution);
    Graphics::Dimension GetPreviewResolution() const;
    result SetPreviewFormat(PixelFormat format);
    result SetCaptureResolution(const Graphics::Dimension& resolution);
    result SetCaptureFormat(PixelFormat format);

    /// The state is kPreviewing when this returns. Frames come 30 times a second to the listener,
    /// unless `callbacks` is false. `buffer` is null: frames are delivered by callback only
    /// (kUnsupported otherwise).
    result StartPreview(Base::ByteBuffer* buffer, bool callbacks);
    /// Drops every callback under way, that of a capture included.
    result StopPreview();

    /// kUnsupported where the device cannot focus. At most one focus or capture is under way.
    result StartAutoFocus();
    result Capture();

    /// One of six steps of half a magnification between 1x and 4x, while powered on; kOutOfRange
    /// at either end. Applies to the preview and to captures.
    result ZoomIn();
    result ZoomOut();

    /// Switching off always succeeds; switching on is kInvalidState while powered off and
    /// kUnsupported without a flash. PowerOff switches it off.
    result SetFlash(bool on);

    /// Lives as long as the Camera. kUnsupported where the device cannot change it.
    result SetWhiteBalance(CameraWhiteBalance whiteBalance);
    CameraWhiteBalance GetWhiteBalance() const;

  private:
    std::unique_ptr<CameraSession> session_;  // null before Construct
};

}  // namespace Osp::Media
