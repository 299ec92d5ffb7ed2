// Which camera stands in which place of the phone.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/cameras/camera_modules.h"
#include "host/outcome.h"
#include "osp/media/camera/camera_service.h"

namespace Host {

/// The sources that there are, for the user: "auto, scene, ... or none".
std::string KnownSources();
/// Fails for a name that is none of these, and for a real camera where time is not real; whether
/// such a camera can be had is another matter.
Outcome<> CheckSource(std::string_view source, bool isTimeReal);

/// From the names of sources. A camera that is asked for by its name and is not there yet comes
/// into use once it is; that is said on standard error. Fails when a source cannot be had at all.
/// `modules` outlives the cameras. On the loop thread, whose loop is installed.
Outcome<std::unique_ptr<Osp::Media::CameraService>> MakeCameras(std::string_view primary,
                                                                std::string_view secondary,
                                                                bool isTimeReal,
                                                                CameraModules& modules);

}  // namespace Host
