// What a camera shows while its device is unplugged.
#pragma once

#include <memory>

#include "osp/media/camera/generated_camera.h"

namespace Osp::Media {

/// Previews a plain picture that says so, upright on either camera; every still fails.
class DisconnectedCamera : public GeneratedCamera {
  public:
    explicit DisconnectedCamera(CameraSelection selection);

  private:
    FrameJob MakeFrameJob(const StreamSettings& settings, long long number) override;
    StillJob MakeStillJob(const StreamSettings& settings, long long number) override;

    std::shared_ptr<const Base::ByteBuffer> frame_;  // null until first shown
    Graphics::Dimension frameSize_;
};

}  // namespace Osp::Media
