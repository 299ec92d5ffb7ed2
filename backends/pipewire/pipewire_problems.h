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
    std::vector<std::string> fileProblems{};  // why this user cannot see what the kernel has
};

/// Adds the way that was taken to the notes, and what stands in the way to the problems.
void Explain(const PipewireFacts& facts, BackendReport& report);

}  // namespace Osp::Media
