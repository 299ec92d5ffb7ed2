// What a transaction sends.
#pragma once

#include <memory>
#include <string>

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/net/http/http_header.h>
#include <osp/net/http/http_method.h>

namespace Osp::Net::Http {

class RequestBody;

/// Belongs to its transaction.
class HttpRequest {
  public:
    ~HttpRequest();
    HttpRequest(const HttpRequest&) = delete;
    HttpRequest& operator=(const HttpRequest&) = delete;

    /// GET unless it is set.
    void SetMethod(HttpMethod method) { method_ = method; }
    HttpMethod GetMethod() const { return method_; }

    /// Absolute, on the session's host, of printable ASCII and without a fragment.
    /// kInvalidArgument, changing nothing, for anything else.
    result SetUri(const Base::String& uri);
    const std::string& GetUri() const { return uri_; }

    HttpHeader& GetHeader() { return header_; }
    const HttpHeader& GetHeader() const { return header_; }

    /// What remains of `part` follows what was written before; copied. Before the transaction is
    /// submitted at any time, afterwards once for each report that it is ready to write. Changing
    /// nothing, kInvalidState at any other time, kInvalidArgument when nothing remains and
    /// kOutOfRange for more than "Content-Length" still promises.
    result WriteBody(const Base::ByteBuffer& part);

  private:
    friend class Exchange;
    friend class HttpTransaction;

    explicit HttpRequest(std::string hostAddress);

    std::string hostAddress_;
    std::string uri_;
    HttpMethod method_ = HttpMethod::kGet;
    HttpHeader header_;
    std::unique_ptr<RequestBody> body_;
};

}  // namespace Osp::Net::Http
