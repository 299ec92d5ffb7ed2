#include "backends/pipewire/pipewire_connection.h"

#include <cerrno>
#include <cstring>
#include <ctime>

// A connection may end in any of its own callbacks, where it must not be destroyed. So the loss is
// only noted there, and a timer on the same thread takes it down and dials again, once a second
// until there is a daemon. Three round trips tell that all cameras are known: one for the registry,
// one for the nodes that its answers made us ask about, and one for their modes likewise.

namespace Osp::Media {

namespace {

constexpr long kRetrySeconds = 1;
constexpr int kRoundTrips = 3;

}  // namespace

const pw_core_events PipewireConnection::kEvents = [] {
    pw_core_events events{};
    events.version = PW_VERSION_CORE_EVENTS;
    events.done = [](void* data, std::uint32_t id, int) {
        auto& connection = *static_cast<PipewireConnection*>(data);
        if (id != PW_ID_CORE || connection.isKnown_) return;
        if (++connection.awaitedSync_ < kRoundTrips) {
            pw_core_sync(connection.core_.get(), PW_ID_CORE, 0);
            return;
        }
        connection.isKnown_ = true;
        connection.OnGraphChanged();
    };
    events.error = [](void* data, std::uint32_t id, int, int code, const char* message) {
        static_cast<PipewireConnection*>(data)->OnError(id, code, message);
    };
    return events;
}();

PipewireConnection::PipewireConnection() : loop_(pw_thread_loop_new("cameras", nullptr)) {
    if (!loop_) return;
    pw_loop* const loop = pw_thread_loop_get_loop(loop_.get());
    retry_ = pw_loop_add_timer(
        loop,
        [](void* data, std::uint64_t) {
            auto& connection = *static_cast<PipewireConnection*>(data);
            if (connection.isLost_) connection.Disconnect();
            if (!connection.core_) connection.Connect();
        },
        this);
    context_.reset(pw_context_new(loop, nullptr, 0));
    Connect();
    pw_thread_loop_start(loop_.get());
}

PipewireConnection::~PipewireConnection() {
    if (!loop_) return;
    pw_thread_loop_stop(loop_.get());
    Disconnect();
    pw_loop_destroy_source(pw_thread_loop_get_loop(loop_.get()), retry_);
}

void PipewireConnection::Connect() {
    isKnown_ = false;
    awaitedSync_ = 0;
    core_.reset(context_ ? pw_context_connect(context_.get(), nullptr, 0) : nullptr);
    if (!core_) {
        error_ = std::strerror(errno);
        ConnectLater();
        return;
    }
    error_.clear();
    pw_core_add_listener(core_.get(), &hook_, &kEvents, this);
    PipewireGraph::Listener& listener = *this;
    graph_ = std::make_unique<PipewireGraph>(core_.get(), listener);
    pw_core_sync(core_.get(), PW_ID_CORE, 0);
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

void PipewireConnection::ConnectLater() {
    timespec delay{kRetrySeconds, 0};
    pw_loop_update_timer(pw_thread_loop_get_loop(loop_.get()), retry_, &delay, nullptr, false);
}

void PipewireConnection::OnError(std::uint32_t id, int code, const char* message) {
    if (id != PW_ID_CORE || code != -EPIPE) return;  // of one object, which tells by itself
    isLost_ = true;
    error_ = message;
    timespec soon{0, 1};
    pw_loop_update_timer(pw_thread_loop_get_loop(loop_.get()), retry_, &soon, nullptr, false);
}

void PipewireConnection::OnGraphChanged() {
    for (Observer* observer : observers_) observer->OnCamerasChanged();
    Signal();
}

void PipewireConnection::WaitUntilKnown(std::chrono::milliseconds limit) {
    if (!loop_) return;
    const auto end = std::chrono::steady_clock::now() + limit;
    const Lock lock(*this);
    while (core_ && !isKnown_ && Wait(end)) {
    }
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
