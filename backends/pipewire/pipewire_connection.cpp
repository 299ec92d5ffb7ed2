#include "backends/pipewire/pipewire_connection.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <utility>

// A connection may end in any of its own callbacks, where it must not be destroyed. So the loss is
// only noted there, and a timer on the same thread takes it down and dials again, once a second
// until there is a daemon. Three round trips tell that all cameras are known: one for the registry,
// one for the nodes that its answers made us ask about, and one for their modes likewise. Through
// the portal they tell less: the session manager shows a sandbox its cameras one by one afterwards.
//
// The portal may put a question to the user. So it is asked once and its answer holds, whatever it
// is, for the life of the process; and not at all where the daemon has been reached directly, whose
// pauses are its restarts. It is asked again only about a remote that has worked and is lost: that
// is the right taken away, which the answer will tell, or the daemon restarted, which the portal
// may not have noticed yet, so that its failures mean nothing then.

namespace Osp::Media {

namespace {

constexpr timespec kSoon{0, 1};
constexpr timespec kRetry{1, 0};
constexpr int kRoundTrips = 3;

}  // namespace

const pw_core_events PipewireConnection::kEvents = [] {
    pw_core_events events{};
    events.version = PW_VERSION_CORE_EVENTS;
    events.done = [](void* data, std::uint32_t id, int) {
        if (id == PW_ID_CORE) static_cast<PipewireConnection*>(data)->OnRoundTrip();
    };
    events.error = [](void* data, std::uint32_t id, int, int code, const char* message) {
        static_cast<PipewireConnection*>(data)->OnError(id, code, message);
    };
    return events;
}();

PipewireConnection::PipewireConnection(bool isInSandbox)
    : isInSandbox_(isInSandbox), loop_(pw_thread_loop_new("cameras", nullptr)) {
    if (!loop_) return;
    pw_loop* const loop = pw_thread_loop_get_loop(loop_.get());
    retry_ = pw_loop_add_timer(
        loop, [](void* data, std::uint64_t) { static_cast<PipewireConnection*>(data)->OnRetry(); },
        this);
    context_.reset(pw_context_new(loop, nullptr, 0));
    {
        const Lock lock(*this);
        Connect();
    }
    pw_thread_loop_start(loop_.get());
}

PipewireConnection::~PipewireConnection() {
    if (!loop_) return;
    pw_thread_loop_stop(loop_.get());
    portal_.reset();
    Disconnect();
    pw_loop_destroy_source(pw_thread_loop_get_loop(loop_.get()), retry_);
}

void PipewireConnection::OnRetry() {
    if (isLost_) {
        Disconnect();
        // The portal has to find the daemon again itself.
        if (way_ == Way::kPortal) return RetryAfter(kRetry);
    }
    if (!core_) Connect();
}

void PipewireConnection::Connect() {
    isKnown_ = false;
    awaitedSync_ = 0;
    core_.reset(Dial());
    if (!core_) {
        if (MayAskPortal()) AskPortal();
        if (MayDialDirectly()) RetryAfter(kRetry);
        return;
    }
    error_.clear();
    pw_core_add_listener(core_.get(), &hook_, &kEvents, this);
    PipewireGraph::Listener& listener = *this;
    graph_ = std::make_unique<PipewireGraph>(core_.get(), listener);
    pw_core_sync(core_.get(), PW_ID_CORE, 0);
}

/// Null when no daemon is reached now.
pw_core* PipewireConnection::Dial() {
    const bool isRemote = remote_.IsOpen();
    if (!context_ || (!isRemote && !MayDialDirectly())) return nullptr;
    pw_core* const core = isRemote
                              ? pw_context_connect_fd(context_.get(), remote_.Release(), nullptr, 0)
                              : pw_context_connect(context_.get(), nullptr, 0);
    if (core == nullptr) error_ = std::strerror(errno);
    way_ = isRemote ? Way::kPortal : Way::kDirect;
    if (isRemote) hasRemoteWorked_ = false;
    wasDirect_ |= core != nullptr && !isRemote;
    return core;
}

void PipewireConnection::Disconnect() {
    isLost_ = false;
    isKnown_ = false;
    if (!core_) return;
    for (Observer* observer : observers_) observer->OnDisconnected();
    graph_.reset();
    spa_hook_remove(&hook_);
    core_.reset();
    OnGraphChanged();
}

void PipewireConnection::RetryAfter(const timespec& delay) {
    timespec value = delay;
    pw_loop_update_timer(pw_thread_loop_get_loop(loop_.get()), retry_, &value, nullptr, false);
}

// Where there is no portal, a sandbox that shows the daemon means it.
bool PipewireConnection::MayDialDirectly() const {
    return !isInSandbox_ || (portalAnswer_ && (portalAnswer_->state == PortalState::kNoBus ||
                                               portalAnswer_->state == PortalState::kNoPortal));
}

bool PipewireConnection::MayAskPortal() const {
    if (!isInSandbox_ && wasDirect_) return false;
    if (!portalAnswer_) return true;
    const PortalState state = portalAnswer_->state;
    return hasRemoteWorked_ && (state == PortalState::kGranted || state == PortalState::kFailed);
}

void PipewireConnection::AskPortal() {
    if (!portal_) {
        portal_ =
            std::make_unique<Portal>([this](PortalAnswer answer) { OnPortal(std::move(answer)); });
    }
    portalAnswer_ = {PortalState::kAsking, {}, {}};
    portal_->Ask();
}

void PipewireConnection::OnPortal(PortalAnswer answer) {
    const Lock lock(*this);
    if (!core_) remote_ = std::exchange(answer.remote, Io::FileDescriptor());
    portalAnswer_ = std::move(answer);
    if (isInSandbox_) error_.clear();  // of what is given up
    if (remote_.IsOpen() || (!core_ && isInSandbox_ && MayDialDirectly())) {
        Connect();
    } else if (!core_ && MayAskPortal()) {
        RetryAfter(kRetry);
    }
    Signal();
}

void PipewireConnection::OnError(std::uint32_t id, int code, const char* message) {
    if (id != PW_ID_CORE || code != -EPIPE) return;  // of one object, which tells by itself
    isLost_ = true;
    error_ = message;
    RetryAfter(kSoon);
}

void PipewireConnection::OnRoundTrip() {
    if (isKnown_) return;
    if (++awaitedSync_ < kRoundTrips) {
        pw_core_sync(core_.get(), PW_ID_CORE, 0);
        return;
    }
    isKnown_ = true;
    if (way_ == Way::kPortal) hasRemoteWorked_ = true;
    OnGraphChanged();
}

void PipewireConnection::OnGraphChanged() {
    for (Observer* observer : observers_) observer->OnCamerasChanged();
    Signal();
}

void PipewireConnection::WaitUntilKnown(std::chrono::milliseconds limit) {
    if (!loop_) return;
    const auto end = std::chrono::steady_clock::now() + limit;
    const Lock lock(*this);
    while (IsWorthWaiting() && Wait(end)) {
    }
}

bool PipewireConnection::IsWorthWaiting() const {
    if (core_) return !isKnown_ || (way_ == Way::kPortal && graph_->Cameras().empty());
    return remote_.IsOpen() || (portalAnswer_ && portalAnswer_->state == PortalState::kAsking);
}

bool PipewireConnection::Wait(std::chrono::steady_clock::time_point limit) {
    const auto left = limit - std::chrono::steady_clock::now();
    if (left.count() <= 0) return false;
    timespec end{};
    pw_thread_loop_get_time(loop_.get(), &end,
                            std::chrono::duration_cast<std::chrono::nanoseconds>(left).count());
    return pw_thread_loop_timed_wait_full(loop_.get(), &end) == 0;
}

}  // namespace Osp::Media
