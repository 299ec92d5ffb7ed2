// One conversation with the desktop's camera portal.
#pragma once

#include <functional>
#include <gio/gio.h>
#include <string>

#include "osp/base/owner.h"
#include "osp/io/file_descriptor.h"

namespace Osp::Media {

enum class PortalState {
    kAsking,    // nothing has been answered: a person may be reading the question
    kGranted,   // with a connection to the daemon
    kNoBus,     // there is no session bus
    kNoPortal,  // nobody offers cameras on it
    kNoCamera,  // the portal sees none; it is asked once it does
    kRefused,   // by the user, now or earlier
    kEnded,     // the question went away without an answer
    kFailed,    // the portal broke off
};

struct PortalAnswer {
    PortalState state{};
    std::string error;          // of the bus or the portal, in its own words; may be empty
    Io::FileDescriptor remote;  // of kGranted alone
};

/// Waits as long as it takes, on the calling thread, whose default context is `context` and which
/// nobody else iterates. `cancellable`, followed by a wake-up of the context, ends any waiting.
/// Lives on while what it has obtained is in use: it stays the one who asked.
class PortalSession {
  public:
    using Tell = std::function<void(PortalAnswer answer)>;

    PortalSession(GMainContext* context, GCancellable* cancellable)
        : context_(context), cancellable_(cancellable) {}
    ~PortalSession();
    PortalSession(const PortalSession&) = delete;
    PortalSession& operator=(const PortalSession&) = delete;

    /// Asks once. Tells every state that is come to; the last one is returned instead. What a
    /// cancelled question returns means nothing.
    PortalAnswer Ask(const Tell& tell);

  private:
    PortalAnswer FindPortal();
    PortalAnswer AskUser();
    PortalAnswer OpenRemote();
    bool SeesCamera() const;
    bool IsPortalThere() const;
    template <class Condition>
    bool Await(const Condition& condition) const;

    GMainContext* const context_;
    GCancellable* const cancellable_;
    Base::Owner<GDBusConnection, g_object_unref> bus_;
    Base::Owner<GDBusProxy, g_object_unref> portal_;
};

}  // namespace Osp::Media
