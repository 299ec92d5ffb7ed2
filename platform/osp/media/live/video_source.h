// A real camera as a back end has it: a stream of pictures in the formats that devices speak.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include <osp/base/result.h>
#include <osp/graphics/dimension.h>
#include <osp/media/camera_white_balance.h>

namespace Osp::Media {

/// BT.601, video range; a JPEG has its own full range.
enum class VideoFormat { kI420, kNv12, kYuy2, kMjpeg };

struct VideoMode {
    VideoFormat format{};
    Graphics::Dimension size;
    int framesASecond = 0;  // the most that the device offers; 0 where it does not say

    friend bool operator==(const VideoMode&, const VideoMode&) = default;
};

struct VideoPlane {
    const std::uint8_t* data = nullptr;
    int strideBytes = 0;
};

/// One picture where the device has put it. Not owned; valid during the call that hands it over.
struct VideoPicture {
    VideoFormat format{};
    Graphics::Dimension size;
    std::array<VideoPlane, 3> planes;       // kI420: Y, Cb, Cr; kNv12: Y, CbCr; kYuy2: the first
    std::span<const std::uint8_t> mjpeg{};  // of kMjpeg alone
};

/// Lays a picture of `format` and `size` out over `data`, one plane behind the other; a stride of 0
/// means rows without gaps. False for what a device cannot have meant: rows that overlap, or a
/// picture that goes past the end of the data.
bool LayOut(VideoFormat format, const Graphics::Dimension& size, int strideBytes,
            std::span<const std::uint8_t> data, VideoPicture& picture);

/// Takes the pictures of one stream, on one thread at a time, which may be the device's own.
class VideoSink {
  public:
    virtual ~VideoSink() = default;
    virtual void OnPicture(const VideoPicture& picture) = 0;
    /// Something came that is no picture.
    virtual void OnDamage() = 0;
    /// The stream has ended by itself. The last call.
    virtual void OnEnded() = 0;
};

/// What a device does by itself; the rest is done to its pictures.
enum class VideoControl { kZoom, kWhiteBalance, kFocus, kFlash };

/// One camera, present or not. Methods on the loop thread.
class VideoSource {
  public:
    virtual ~VideoSource() = default;

    virtual bool IsThere() const = 0;
    /// `changed` is run on any thread after the camera has come or gone, until this object ends or
    /// another function, which may be empty, is set.
    virtual void Watch(std::function<void()> changed) = 0;
    /// Empty while the camera is not there.
    virtual std::vector<VideoMode> Modes() const = 0;

    /// Begins to deliver in a mode of Modes(). Waits for the device's answer, half a second at
    /// most; a device that takes longer may still begin or end. kDeviceBusy when another program
    /// has it, kObjectNotFound when it is not there. No stream after a failure.
    virtual result Start(const VideoMode& mode, std::shared_ptr<VideoSink> sink) = 0;
    /// Nothing is delivered once this returns. Does nothing when nothing runs.
    virtual void Stop() = 0;

    virtual bool Has(VideoControl control) const = 0;
    /// Zoom: a step as in StreamSettings. White balance: the number of a CameraWhiteBalance. Focus:
    /// any value begins to focus. Flash: 0 or 1. kUnsupported unless Has(control).
    virtual result Set(VideoControl control, int value) = 0;
};

}  // namespace Osp::Media
