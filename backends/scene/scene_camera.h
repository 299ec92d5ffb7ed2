// The camera of machines that have none: a moving picture that is drawn.
#pragma once

#include <memory>

#include "osp/media/camera/generated_camera.h"

namespace Osp::Media {

/// What it sees depends on frame number, size, zoom and white balance, and on nothing else. Focuses
/// within two milliseconds.
class SceneCamera : public GeneratedCamera {
  public:
    explicit SceneCamera(CameraSelection selection);

    result StartAutoFocus() override;

  private:
    class Scenery;

    FrameJob MakeFrameJob(const StreamSettings& settings, long long number) override;
    StillJob MakeStillJob(const StreamSettings& settings, long long number) override;
    PrepareJob MakePrepareJob(const StreamSettings& settings) override;

    std::shared_ptr<Scenery> scenery_;  // shared with the jobs under way
};

}  // namespace Osp::Media
