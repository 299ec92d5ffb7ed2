// The ways to real cameras, in modules that are loaded at first use.
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "host/outcome.h"
#include "osp/media/live/camera_backend.h"

namespace Host {

enum class CameraWay { kPipewire, kV4l2, kLibcamera };
constexpr std::array kCameraWays = {CameraWay::kPipewire, CameraWay::kV4l2, CameraWay::kLibcamera};

/// As the user writes it.
std::string_view NameOf(CameraWay way);

/// Holds the back ends, which outlive the cameras that are made from them. Loop thread only.
class CameraModules {
  public:
    /// Fails, again at every call, when the module is missing or cannot work here.
    Outcome<Osp::Media::CameraBackend*> Get(CameraWay way);
    bool IsLoaded(CameraWay way) const {
        return backends_[static_cast<std::size_t>(way)] != nullptr;
    }

  private:
    std::array<std::unique_ptr<Osp::Media::CameraBackend>, kCameraWays.size()> backends_;
};

}  // namespace Host
