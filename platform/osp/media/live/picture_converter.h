// From a device's pictures to what a camera delivers.
#pragma once

#include <osp/base/byte_buffer.h>
#include <osp/media/camera_selection.h>

#include "osp/media/camera/camera_device.h"
#include "osp/media/live/mjpeg_decoder.h"
#include "osp/media/live/planar_picture.h"
#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// Takes the middle of each picture in the shape that is wanted, magnifies, balances and turns it;
/// preview and still alike. What the settings ask for is done to the pictures: what the device does
/// itself is taken out of them before. Keeps its memory from one picture to the next. One thread at
/// a time.
class PictureConverter {
  public:
    explicit PictureConverter(CameraSelection selection) : selection_(selection) {}

    /// Constructs `frame` with I420Bytes(settings.previewSize) bytes. False, with nothing
    /// constructed, for a damaged picture.
    bool MakeFrame(const VideoPicture& picture, const StreamSettings& settings,
                   Base::ByteBuffer& frame);
    /// Constructs `jpeg` with a picture of settings.stillSize: the device's own bytes where nothing
    /// has to be done to them. False as above.
    bool MakeStill(const VideoPicture& picture, const StreamSettings& settings,
                   Base::ByteBuffer& jpeg);

  private:
    bool Unpack(const VideoPicture& picture, const Graphics::Dimension& upright, int zoomStep,
                PlanarView& view);
    bool UnpackMjpeg(const VideoPicture& picture, const Graphics::Dimension& upright, int zoomStep,
                     PlanarView& view);
    bool FillUpright(const VideoPicture& picture, const Graphics::Dimension& size, int zoomStep,
                     PlanarView& view);
    bool IsDeliverable(const VideoPicture& picture, const StreamSettings& settings);

    CameraSelection selection_;
    MjpegDecoder decoder_;
    PlanarPicture unpacked_;
    PlanarPicture scaled_;
    PlanarPicture turned_;
    Base::Block colours_;
};

}  // namespace Osp::Media
