// A camera that sees the photographs of a folder, one after the other.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "osp/media/camera/generated_camera.h"

namespace Osp::Media {

/// Every capture delivers the next picture, every preview frame shows the one to come; after the
/// last comes the first. A JPEG that has the capture size already is delivered byte for byte,
/// unless zoom or white balance change it or its EXIF says that it is turned. Others are turned
/// upright and scaled to fill, their middle kept. What turns out to be unreadable is passed over
/// and named once on standard error.
class PhotosCamera : public GeneratedCamera {
  public:
    /// The JPEG and PNG files of `folder`, a real path, in the order of their names' bytes. Null,
    /// with one line in `error`, when it cannot be read or has none that can.
    static std::unique_ptr<PhotosCamera> Make(const std::string& folder, CameraSelection selection,
                                              std::string& error);

  private:
    struct Pictures;

    PhotosCamera(const std::string& folder, CameraSelection selection,
                 std::shared_ptr<Pictures> pictures);
    FrameJob MakeFrameJob(const StreamSettings& settings, long long number) override;
    StillJob MakeStillJob(const StreamSettings& settings, long long number) override;

    std::shared_ptr<Pictures> pictures_;  // shared with the jobs under way
    std::size_t next_ = 0;                // the picture that the next capture tries first
};

}  // namespace Osp::Media
