// A way to real cameras, in a module of its own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "osp/media/live/video_source.h"

namespace Osp::Media {

enum class CameraFacing { kUnknown, kBack, kFront };

struct CameraInfo {
    std::string id;    // stable across restarts and ports; what the user writes to have this camera
    std::string name;  // for a person
    CameraFacing facing = CameraFacing::kUnknown;
    std::vector<VideoMode> modes;
    std::vector<std::string> users;  // programs that see through it now, as far as can be told
};

/// What a person needs in order to get cameras out of a back end.
struct BackendReport {
    std::vector<CameraInfo> cameras;    // in the order of their ids
    bool awaitsConsent = false;         // somebody is being asked, and cameras come with a yes
    std::vector<std::string> notes;     // what was found: versions, ways that were taken
    std::vector<std::string> problems;  // why there are no cameras, or fewer, and what helps
};

/// Loop thread only. Threads are its own matter.
class CameraBackend {
  public:
    virtual ~CameraBackend() = default;
    /// Waits until what there is now is known, a second at most. `users` may cost more to find out
    /// and is filled only when asked for.
    virtual BackendReport Look(bool withUsers) = 0;
    /// The camera with that id, which need not be there yet; empty: the first in the order of ids.
    /// Ends before the back end does.
    virtual std::unique_ptr<VideoSource> Open(const std::string& id) = 0;
};

/// What a module exports by the name below: the back end that the user calls `name`. The caller
/// owns it. Null when it cannot work at all.
using MakeCameraBackendFunction = CameraBackend* (*)(const char* name);
inline constexpr const char* kMakeCameraBackendSymbol = "OspMakeCameraBackend";

}  // namespace Osp::Media
