// The real cameras that can be reached here, for a person or a program to read.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "host/cameras/camera_modules.h"
#include "osp/media/live/camera_backend.h"

namespace Host {

/// What one way to cameras has found.
struct WayReport {
    std::string way;
    Osp::Media::BackendReport report;
};

enum class Ways { kAll, kInUse };

/// Asks each way in turn, or each that a camera has been made in, and each for who uses its
/// cameras; takes a second for one that hangs.
std::vector<WayReport> LookForCameras(CameraModules& modules, Ways ways);

/// One paragraph a camera: what to write to have it, name, where it looks, sizes and formats,
/// users.
std::string CamerasAsText(const std::vector<WayReport>& reports);
/// One paragraph a way: what was found, why no more, and what helps.
std::string WaysAsText(const std::vector<WayReport>& reports);

nlohmann::json CamerasAsJson(const std::vector<WayReport>& reports);
nlohmann::json WaysAsJson(const std::vector<WayReport>& reports);

}  // namespace Host
