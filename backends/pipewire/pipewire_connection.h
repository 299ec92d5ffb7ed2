// The connection with the PipeWire daemon, in one of two ways, found again when it is lost.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <pipewire/pipewire.h>
#include <set>
#include <string>

#include "backends/pipewire/pipewire_graph.h"
#include "backends/pipewire/portal.h"
#include "osp/base/owner.h"
#include "osp/io/file_descriptor.h"

namespace Osp::Media {

/// Has a thread of its own, on which everything of PipeWire happens with its lock held. Methods on
/// the loop thread, with the lock held where they say so.
class PipewireConnection : private PipewireGraph::Listener {
  public:
    /// Holds the lock. Not nested.
    class Lock {
      public:
        explicit Lock(const PipewireConnection& connection) : loop_(connection.loop_.get()) {
            pw_thread_loop_lock(loop_);
        }
        ~Lock() { pw_thread_loop_unlock(loop_); }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

      private:
        pw_thread_loop* loop_;
    };

    /// Told on PipeWire's thread, with the lock held.
    class Observer {
      public:
        virtual ~Observer() = default;
        virtual void OnCamerasChanged() = 0;
        /// The connection ends after this: what has been made from it goes now.
        virtual void OnDisconnected() = 0;
    };

    enum class Way { kDirect, kPortal };

    /// Outside of a sandbox the user's own daemon is dialled, and the desktop's portal is asked
    /// when there is none. In a sandbox the portal is asked, and its no is not gone around.
    explicit PipewireConnection(bool isInSandbox = IsInSandbox());
    ~PipewireConnection() override;
    PipewireConnection(const PipewireConnection&) = delete;
    PipewireConnection& operator=(const PipewireConnection&) = delete;

    /// Waits until the cameras are known or that there are none, for `limit` at most. Not with the
    /// lock held.
    void WaitUntilKnown(std::chrono::milliseconds limit);

    /// With the lock held. Null while there is no daemon.
    PipewireGraph* Graph() const { return graph_.get(); }
    pw_core* Core() const { return core_.get(); }
    /// Why the daemon cannot be dialled, in its own words; empty while there is one.
    const std::string& Error() const { return error_; }
    /// Of the daemon that there is.
    Way TakenWay() const { return way_; }
    bool IsSandboxed() const { return isInSandbox_; }
    /// What the portal has said last, without the remote; nothing as long as it was not asked.
    const std::optional<PortalAnswer>& Portals() const { return portalAnswer_; }
    void Add(Observer& observer) { observers_.insert(&observer); }
    void Remove(Observer& observer) { observers_.erase(&observer); }
    /// Lets go of the lock until anything has happened or `limit` has passed; returns false then.
    bool Wait(std::chrono::steady_clock::time_point limit);
    /// Wakes Wait.
    void Signal() { pw_thread_loop_signal(loop_.get(), false); }

  private:
    static const pw_core_events kEvents;

    void OnGraphChanged() override;
    void OnRoundTrip();
    void OnError(std::uint32_t id, int code, const char* message);
    void OnPortal(PortalAnswer answer);
    void OnRetry();
    void Connect();
    pw_core* Dial();
    bool MayDialDirectly() const;
    bool MayAskPortal() const;
    void AskPortal();
    bool IsWorthWaiting() const;
    void Disconnect();
    void RetryAfter(const timespec& delay);

    const bool isInSandbox_;
    Base::Owner<pw_thread_loop, pw_thread_loop_destroy> loop_;
    Base::Owner<pw_context, pw_context_destroy> context_;
    struct Disconnector {
        void operator()(pw_core* core) const { pw_core_disconnect(core); }
    };
    std::unique_ptr<pw_core, Disconnector> core_;
    spa_hook hook_{};
    std::unique_ptr<PipewireGraph> graph_;  // goes before the core
    std::set<Observer*> observers_;
    std::string error_;
    spa_source* retry_ = nullptr;  // a timer; owned by the loop
    int awaitedSync_ = 0;
    bool isKnown_ = false;  // every camera that was there at the connection is in the graph
    bool isLost_ = false;
    Way way_ = Way::kDirect;
    bool wasDirect_ = false;  // at any time
    std::optional<PortalAnswer> portalAnswer_;
    Io::FileDescriptor remote_;       // from the portal, until it is dialled
    bool hasRemoteWorked_ = false;    // the last that was dialled
    std::unique_ptr<Portal> portal_;  // goes first, without the lock; null until it is asked
};

}  // namespace Osp::Media
