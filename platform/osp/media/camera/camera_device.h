// What stands behind a camera: one interface for every source of pictures.
#pragma once

#include <functional>
#include <span>
#include <string>

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>
#include <osp/graphics/dimension.h>
#include <osp/media/camera_white_balance.h>

namespace Osp::Media {

/// What the application has chosen about the pictures.
struct StreamSettings {
    Graphics::Dimension previewSize;
    Graphics::Dimension stillSize;
    int zoomStep = 0;  // half magnifications above 1x, 0 to kMostZoomSteps
    CameraWhiteBalance whiteBalance = CameraWhiteBalance::kAuto;

    friend bool operator==(const StreamSettings&, const StreamSettings&) = default;
};

constexpr int kMostZoomSteps = 6;

/// Takes what a device delivers. Loop thread only. Nothing is delivered from inside a call on the
/// device, and no delivery calls the device.
class CameraDeviceClient {
  public:
    virtual ~CameraDeviceClient() = default;
    /// False while two frames wait for the application. A device asks before it makes a frame, and
    /// what it hands over all the same is dropped.
    virtual bool WantsFrame() const = 0;
    /// One I420 frame (Y, Cb, Cr without gaps) of the preview size.
    virtual void OnFrame(Base::ByteBuffer frame) = 0;
    virtual void OnFocused(bool isSharp) = 0;
    /// One JPEG of the still size; empty when `r` is a failure.
    virtual void OnStill(Base::ByteBuffer jpeg, result r) = 0;
    /// The stream has ended by itself; Stop is not called for it.
    virtual void OnFailed(result r) = 0;
};

/// A camera's hardware, or what plays its part. It outlives the objects that the application sees,
/// so that what it has prepared survives power cycles. All methods on the loop thread, and none of
/// them blocks, but that Start may wait for the answer of a device, half a second at most. Threads
/// are the device's own matter: it delivers on the loop, it delivers nothing of a stream once Stop
/// has returned, and its destructor waits for nothing that needs the loop. The caller keeps to the
/// order Open, Start, Stop, Close; the four are not nested.
class CameraDevice {
  public:
    virtual ~CameraDevice() = default;

    /// Stable across restarts and ports; never a device number.
    virtual const std::string& Id() const = 0;
    /// In ascending order, the preferred one last.
    virtual std::span<const Graphics::Dimension> PreviewSizes() const = 0;

    /// `client` is not owned and stays until Close. kDeviceBusy when another program has the
    /// device.
    virtual result Open(CameraDeviceClient& client) = 0;
    /// Switches the flash off too. Also called after an Open that failed.
    virtual void Close() = 0;

    /// Begins to deliver frames, the first as soon as it can be made. A failure, also of a device
    /// that could not be opened again after it had been unplugged, leaves the stream stopped.
    virtual result Start(const StreamSettings& settings) = 0;
    /// Takes effect with the next frame and still that are begun. Only zoom and white balance
    /// differ from what was started.
    virtual void Change(const StreamSettings& settings) = 0;
    virtual void Stop() = 0;

    /// Answered by OnFocused while the stream runs; kUnsupported where there is nothing to focus.
    virtual result StartAutoFocus() = 0;
    /// Answered by OnStill while the stream runs. The caller asks for one at a time.
    virtual result RequestStill() = 0;

    virtual bool HasWhiteBalance() const = 0;
    virtual result SwitchFlashOn() = 0;
    virtual void SwitchFlashOff() = 0;

    /// Whether there is hardware that delivers, as far as is known. What has none is always there.
    virtual bool IsPresent() const { return true; }
    /// `changed` is told, from the loop, when that changes. A device that goes while it runs is to
    /// be stopped and closed as any other.
    virtual void WatchPresence(std::function<void(bool isPresent)> /*changed*/) {}
    /// Somebody waits for a device that is not there: it tries to deliver with `settings`, until
    /// it is present or nobody waits any more.
    virtual void Seek(const StreamSettings& /*settings*/) {}
    virtual void StopSeeking() {}
    /// Whether hardware may stay configured for a while after Stop, so that the next Start is
    /// quick. It may until this says otherwise; false also ends what lingers now.
    virtual void SetLingers(bool /*lingers*/) {}
};

}  // namespace Osp::Media
