// Which of the cameras that were found takes which place of the phone.
#pragma once

#include <optional>
#include <span>
#include <string>

#include <osp/media/camera_selection.h>

#include "osp/media/live/camera_backend.h"

namespace Host {

/// The id of the best one beside `taken`: for the primary place one that looks back, for the
/// secondary one that looks front; else one that does not say; else any. `found` is in the order of
/// ids, which decides between equals. Nothing when no camera is left.
std::optional<std::string> ChooseCamera(std::span<const Osp::Media::CameraInfo> found,
                                        Osp::Media::CameraSelection selection,
                                        const std::optional<std::string>& taken);

}  // namespace Host
