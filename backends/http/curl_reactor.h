// libcurl's transfers on GLib's loop.
#pragma once

#include <cstdint>
#include <curl/curl.h>
#include <functional>
#include <glib.h>
#include <map>

#include "backends/http/curl_owner.h"

namespace Osp::Http {

/// Runs on the default main context, between the events of the platform, whatever the application
/// is held up with. Loop thread only.
class CurlReactor {
  public:
    /// What the reactor tells of a handle, never from inside Add.
    class Client {
      public:
        virtual ~Client() = default;
        /// The handle has done what it will.
        virtual void OnDone(CURLcode code) = 0;
    };

    CurlReactor();
    ~CurlReactor();
    CurlReactor(const CurlReactor&) = delete;
    CurlReactor& operator=(const CurlReactor&) = delete;

    /// Until Remove; neither is owned. False without the memory.
    bool Add(CURL* easy, Client& client);
    /// Not from inside a callback of libcurl's.
    void Remove(CURL* easy);

    /// How many bytes the connections of `easy` have moved as far as the other side has confirmed,
    /// in both directions; for comparison with what was before.
    std::uint64_t BytesMoved(CURL* easy) const;

  private:
    struct Watch {
        CURL* easy;
        guint source;
    };

    static int OnSocket(CURL* easy, curl_socket_t socket, int what, void* reactor, void*);
    static int OnTimer(CURLM*, long timeoutMs, void* reactor);
    static gboolean OnReady(gint socket, GIOCondition condition, gpointer reactor);
    static gboolean OnTimeout(gpointer reactor);

    void Unwatch(curl_socket_t socket);
    void Act(curl_socket_t socket, int events);
    void TellWhoIsDone();

    std::map<curl_socket_t, Watch> watches_;
    guint timer_ = 0;  // 0: none
    MultiHandle multi_;
};

}  // namespace Osp::Http
