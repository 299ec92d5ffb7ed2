// What the host knows of the device and does with it.
#pragma once

#include <functional>

#include "osp/base/service.h"

namespace Osp::System {

/// Installed by the host. Loop thread only.
class Device : public Service<Device> {
  public:
    using CountFunction = std::function<int()>;
    using KeepScreenOnFunction = std::function<void(bool)>;

    explicit Device(CountFunction cameraCount) : cameraCount_(std::move(cameraCount)) {}

    int CameraCount() const { return cameraCount_(); }

    /// What to do when the application wants the screen kept on, or no longer. May be empty.
    void SetKeepScreenOnFunction(KeepScreenOnFunction function);
    void KeepScreenOn(bool keepOn);

  private:
    CountFunction cameraCount_;
    KeepScreenOnFunction keepScreenOnFunction_;
    bool keepOn_ = false;
};

}  // namespace Osp::System
