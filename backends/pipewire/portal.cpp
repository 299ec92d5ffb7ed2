#include "backends/pipewire/portal.h"

#include <cstdlib>
#include <memory>
#include <unistd.h>
#include <utility>

namespace Osp::Media {

bool IsInSandbox() {
    return access("/.flatpak-info", F_OK) == 0 || std::getenv("SNAP") != nullptr;
}

Portal::Portal(Tell tell)
    : tell_(std::move(tell)),
      context_(g_main_context_new()),
      end_(g_cancellable_new()),
      thread_(&Portal::Run, this) {}

Portal::~Portal() {
    g_cancellable_cancel(end_.get());
    g_main_context_wakeup(context_.get());
    thread_.join();
}

void Portal::Ask() {
    isAsked_ = true;
    g_main_context_wakeup(context_.get());
}

// The session of the last question stays until the next one, or the end.
void Portal::Run() {
    g_main_context_push_thread_default(context_.get());
    std::unique_ptr<PortalSession> session;
    while (g_cancellable_is_cancelled(end_.get()) == FALSE) {
        if (!isAsked_.exchange(false)) {
            g_main_context_iteration(context_.get(), TRUE);
            continue;
        }
        session = std::make_unique<PortalSession>(context_.get(), end_.get());
        PortalAnswer answer = session->Ask(tell_);
        if (g_cancellable_is_cancelled(end_.get()) == FALSE) tell_(std::move(answer));
    }
    session.reset();
    while (g_main_context_iteration(context_.get(), FALSE) != FALSE) {
    }
    g_main_context_pop_thread_default(context_.get());
}

}  // namespace Osp::Media
