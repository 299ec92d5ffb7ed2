// Which camera stands in which place of the phone.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/outcome.h"
#include "osp/media/camera/camera_service.h"

namespace Host {

/// The sources that there are, for the user: "auto, scene, ... or none".
std::string KnownSources();
/// Fails for a name that is none of these; whether such a camera can be had is another matter.
Outcome<> CheckSource(std::string_view source);

/// From the names of sources. Fails when a camera that is asked for cannot be had.
Outcome<std::unique_ptr<Osp::Media::CameraService>> MakeCameras(std::string_view primary,
                                                                std::string_view secondary);

}  // namespace Host
