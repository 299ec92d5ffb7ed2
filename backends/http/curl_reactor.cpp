// libcurl says which sockets it waits for and for how long; GLib waits and says what has happened.
//
// - Clients are told outside libcurl's calls (TellWhoIsDone), and nothing that they do there may
//   remove a handle: the platform hands everything on as events of its own.
// - A source is made anew whenever libcurl changes its mind: a socket's number may by then be
//   another connection's.
// - The timer only ever runs once; libcurl sets the next one.
#include "backends/http/curl_reactor.h"

#include <algorithm>
#include <glib-unix.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace Osp::Http {

namespace {

constexpr int kFailed = -1;

GIOCondition ConditionOf(int what) {
    int condition = 0;
    if (what == CURL_POLL_IN || what == CURL_POLL_INOUT) condition |= G_IO_IN;
    if (what == CURL_POLL_OUT || what == CURL_POLL_INOUT) condition |= G_IO_OUT;
    return static_cast<GIOCondition>(condition);
}

int EventsOf(GIOCondition condition) {
    int events = 0;
    if ((condition & (G_IO_IN | G_IO_HUP)) != 0) events |= CURL_CSELECT_IN;
    if ((condition & G_IO_OUT) != 0) events |= CURL_CSELECT_OUT;
    if ((condition & G_IO_ERR) != 0) events |= CURL_CSELECT_ERR;
    return events;
}

/// 0 for what is no connection.
std::uint64_t BytesOf(curl_socket_t socket) {
    tcp_info info{};
    socklen_t size = sizeof info;
    if (getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) != 0) return 0;
    return info.tcpi_bytes_acked + info.tcpi_bytes_received;
}

}  // namespace

CurlReactor::CurlReactor() : multi_(curl_multi_init()) {
    if (!multi_) throw std::bad_alloc();
    curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETFUNCTION, OnSocket);
    curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi_.get(), CURLMOPT_TIMERFUNCTION, OnTimer);
    curl_multi_setopt(multi_.get(), CURLMOPT_TIMERDATA, this);
}

CurlReactor::~CurlReactor() {
    multi_ = nullptr;  // which unwatches what is left
    if (timer_ != 0) g_source_remove(timer_);
    for (const auto& [socket, watch] : watches_) g_source_remove(watch.source);
}

bool CurlReactor::Add(CURL* easy, Client& client) {
    curl_easy_setopt(easy, CURLOPT_PRIVATE, &client);
    return curl_multi_add_handle(multi_.get(), easy) == CURLM_OK;
}

void CurlReactor::Remove(CURL* easy) {
    curl_multi_remove_handle(multi_.get(), easy);
}

std::uint64_t CurlReactor::BytesMoved(CURL* easy) const {
    std::uint64_t bytes = 0;
    for (const auto& [socket, watch] : watches_) {
        if (watch.easy == easy) bytes += BytesOf(socket);
    }
    return bytes;
}

int CurlReactor::OnSocket(CURL* easy, curl_socket_t socket, int what, void* reactor, void*) {
    auto& self = *static_cast<CurlReactor*>(reactor);
    self.Unwatch(socket);
    if (what == CURL_POLL_REMOVE) return 0;
    try {
        Watch& watch = self.watches_[socket];
        watch = {easy, g_unix_fd_add(socket, ConditionOf(what), OnReady, reactor)};
        return 0;
    } catch (const std::bad_alloc&) {
        return kFailed;
    }
}

int CurlReactor::OnTimer(CURLM*, long timeoutMs, void* reactor) {
    auto& self = *static_cast<CurlReactor*>(reactor);
    if (self.timer_ != 0) g_source_remove(self.timer_);
    self.timer_ =
        timeoutMs < 0 ? 0 : g_timeout_add(static_cast<guint>(timeoutMs), OnTimeout, reactor);
    return 0;
}

gboolean CurlReactor::OnReady(gint socket, GIOCondition condition, gpointer reactor) {
    static_cast<CurlReactor*>(reactor)->Act(socket, EventsOf(condition));
    return G_SOURCE_CONTINUE;  // also when it has just been removed
}

gboolean CurlReactor::OnTimeout(gpointer reactor) {
    auto& self = *static_cast<CurlReactor*>(reactor);
    self.timer_ = 0;  // first: libcurl may set the next
    self.Act(CURL_SOCKET_TIMEOUT, 0);
    return G_SOURCE_REMOVE;
}

void CurlReactor::Unwatch(curl_socket_t socket) {
    const auto watch = watches_.find(socket);
    if (watch == watches_.end()) return;
    g_source_remove(watch->second.source);
    watches_.erase(watch);
}

void CurlReactor::Act(curl_socket_t socket, int events) {
    int running = 0;
    curl_multi_socket_action(multi_.get(), socket, events, &running);
    TellWhoIsDone();
}

void CurlReactor::TellWhoIsDone() {
    int left = 0;
    while (const CURLMsg* const message = curl_multi_info_read(multi_.get(), &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        char* client = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &client);
        reinterpret_cast<Client*>(client)->OnDone(message->data.result);
    }
}

}  // namespace Osp::Http
