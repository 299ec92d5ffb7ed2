// Transactions with one server.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/net/http/http_header.h>
#include <osp/net/http/http_transaction.h>

namespace Osp::Net {
class CookieJar;
}

namespace Osp::Net::Http {

/// A connection for each transaction, or one for several.
enum class HttpSessionMode { kNormal = 0, kPipelining = 1 };

/// Whether the session keeps cookies, and for how long: they end with the session.
enum class HttpCookieFlag { kNever = 0, kManual = 1, kEnabled = 2 };

/// HTTP/1.1, without redirects and without the environment's proxies. TLS is always verified.
/// Deleting the session deletes its transactions, without a report. Loop thread only.
class HttpSession : public Base::Object {
  public:
    HttpSession();
    ~HttpSession() override;
    HttpSession(const HttpSession&) = delete;
    HttpSession& operator=(const HttpSession&) = delete;

    /// `hostAddress` is the scheme, "http" or "https", and the host with its port, if any; nothing
    /// follows but a slash. Fields of `commonHeader`, which may be null, go before those of each
    /// request. kUnsupported for any mode but the normal one and for a proxy that is not null;
    /// kInvalidArgument for any other address; kInvalidState when constructed already.
    result Construct(HttpSessionMode mode, const Base::String* proxyAddress,
                     const Base::String& hostAddress, const HttpHeader* commonHeader,
                     HttpCookieFlag cookieFlag);

    /// A new transaction, which the caller may delete and the session deletes with itself; null
    /// before construction.
    HttpTransaction* OpenTransactionN();

  private:
    friend class Exchange;
    friend class HttpTransaction;

    std::string hostAddress_;  // empty before construction
    HttpHeader commonHeader_;
    HttpCookieFlag cookieFlag_ = HttpCookieFlag::kNever;
    std::unique_ptr<CookieJar> cookies_;          // null before the first that wants it
    std::vector<HttpTransaction*> transactions_;  // those that have not been deleted
};

}  // namespace Osp::Net::Http
