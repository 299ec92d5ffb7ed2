// The way to cameras that the desktop opens when the user agrees.
#pragma once

#include <atomic>
#include <functional>
#include <gio/gio.h>
#include <thread>

#include "backends/pipewire/portal_session.h"
#include "osp/base/owner.h"

namespace Osp::Media {

/// Whether the system keeps the program away from devices and daemons unless the desktop agrees.
bool IsInSandbox();

/// Has a thread of its own, since the bus and the user take the time that they need. The methods
/// may be called on any one thread and do not wait, except for the end.
class Portal {
  public:
    /// Run on the portal's thread with each state that is come to; never after the object has gone.
    using Tell = PortalSession::Tell;

    explicit Portal(Tell tell);
    /// Takes an open question back.
    ~Portal();
    Portal(const Portal&) = delete;
    Portal& operator=(const Portal&) = delete;

    /// Asks the user, once what was asked before has been answered.
    void Ask();

  private:
    void Run();

    const Tell tell_;
    Base::Owner<GMainContext, g_main_context_unref> context_;
    Base::Owner<GCancellable, g_object_unref> end_;
    std::atomic<bool> isAsked_ = false;
    std::thread thread_;  // the last: it uses the others
};

}  // namespace Osp::Media
