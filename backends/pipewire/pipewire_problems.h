// Why PipeWire shows no cameras, or fewer, in words that help.
#pragma once

#include <string>
#include <vector>

#include "backends/pipewire/portal_session.h"
#include "osp/media/live/camera_backend.h"

namespace Osp::Media {

/// What is known about the way to the cameras.
struct PipewireFacts {
    bool isSandboxed = false;
    bool isConnected = false;
    bool isThroughPortal = false;  // of a connection
    std::string error{};           // why a daemon could not be dialled; empty: it was not tried
    const PortalAnswer* portal = nullptr;  // null: it was not asked; not owned
    bool hasSessionManager = false;        // as far as a direct connection shows
    bool hasCameras = false;
    std::vector<std::string> devices{};        // files of cameras
    std::vector<std::string> closedDevices{};  // those of them that this user may not open
};

/// Adds the way that was taken to the notes, and what stands in the way to the problems.
void Explain(const PipewireFacts& facts, BackendReport& report);

/// The files that the system makes for cameras.
std::vector<std::string> FindDevices();
/// Those that this user may not open.
std::vector<std::string> FilterClosed(const std::vector<std::string>& devices);

}  // namespace Osp::Media
