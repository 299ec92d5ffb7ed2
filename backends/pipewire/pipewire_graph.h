// What PipeWire has: its cameras, and who looks through them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <pipewire/pipewire.h>
#include <string>
#include <vector>

#include "osp/media/live/camera_backend.h"

namespace Osp::Media {

/// One camera of the daemon's.
struct PipewireCamera {
    std::uint32_t nodeId = 0;
    std::string serial;    // what a stream names as its target
    std::string file;      // the kernel's, of a device that has one; else empty
    std::string error;     // why the node does not run, as its device says; empty while it does
    bool isKnown = false;  // its modes have been heard
    CameraInfo info;
};

/// Follows the registry of one connection. PipeWire's thread only, or with its lock held.
class PipewireGraph {
  public:
    /// Told after anything in Cameras() has changed.
    class Listener {
      public:
        virtual ~Listener() = default;
        virtual void OnGraphChanged() = 0;
    };

    /// `core` outlives the graph; neither is owned.
    PipewireGraph(pw_core* core, Listener& listener);
    ~PipewireGraph();
    PipewireGraph(const PipewireGraph&) = delete;
    PipewireGraph& operator=(const PipewireGraph&) = delete;

    /// Those whose modes are known, in the order of their ids.
    std::vector<const PipewireCamera*> Cameras() const;
    /// Empty: the first. Null when there is none.
    const PipewireCamera* Find(const std::string& id) const;
    /// Why it does not deliver, as its device or what connects it says; empty when nobody
    /// complains.
    std::string ErrorOf(const PipewireCamera& camera) const;
    /// Names of the programs that see through it.
    std::vector<std::string> UsersOf(const PipewireCamera& camera) const;
    bool HasSessionManager() const { return defaultMetadata_ != 0; }

  private:
    class Node;
    class Link;

    static const pw_registry_events kEvents;

    void OnGlobal(std::uint32_t id, const char* type, const spa_dict* properties);
    void OnRemoved(std::uint32_t id);
    void NameCameras();

    Listener& listener_;
    pw_registry* registry_ = nullptr;  // owned
    spa_hook hook_{};
    std::map<std::uint32_t, std::unique_ptr<Node>> nodes_;  // of cameras
    std::map<std::uint32_t, std::string> consumers_;        // names of nodes that take video
    std::map<std::uint32_t, std::unique_ptr<Link>> links_;
    std::uint32_t defaultMetadata_ = 0;  // which only a session manager makes
};

}  // namespace Osp::Media
