// The services that photographs are shared with.
#pragma once

#include <memory>

#include <osp/base/string.h>
#include <osp/net/http/http_session.h>

namespace Kivo {

/// Which of them is meant; where it is, the deployment knows.
struct Service {
    const char* name;
    const char* scheme;
};

inline constexpr Service kTwitterApi{"twitter_api", "https"};
inline constexpr Service kTwitpicApi{"twitpic_api", "http"};
inline constexpr Service kTwitpicWeb{"twitpic_web", "http"};
inline constexpr Service kFacebookGraph{"facebook_graph", "https"};
inline constexpr Service kFacebookWeb{"facebook_web", "http"};

/// The name of its host, with the port if there is one; empty when the deployment has none.
Osp::Base::String HostOf(const Service& service);
/// `path`, which begins with a slash, on its host; with an empty host, no URL at all.
Osp::Base::String UrlOf(const Service& service, const Osp::Base::String& path);

inline constexpr int kHttpOk = 200;

/// A session of its own, and a transaction in it that is for `path` and tells `listener`, which
/// outlives them. Both null when they cannot be had.
struct Call {
    std::unique_ptr<Osp::Net::Http::HttpSession> session;
    std::unique_ptr<Osp::Net::Http::HttpTransaction> transaction;  // goes before its session
};
Call OpenCall(const Service& service, Osp::Net::Http::HttpMethod method,
              const Osp::Base::String& path,
              Osp::Net::Http::IHttpTransactionEventListener& listener);

}  // namespace Kivo
