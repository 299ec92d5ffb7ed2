// What a transaction sends.
#pragma once

#include <string>
#include <vector>

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/net/http/http_header.h>
#include <osp/net/http/http_method.h>

namespace Osp::Net::Http {

/// Belongs to its transaction.
class HttpRequest {
  public:
    /// GET unless it is set.
    void SetMethod(HttpMethod method) { method_ = method; }
    HttpMethod GetMethod() const { return method_; }

    /// Absolute, on the session's host. kInvalidArgument, changing nothing, for anything else.
    result SetUri(const Base::String& uri);
    const std::string& GetUri() const { return uri_; }

    HttpHeader& GetHeader() { return header_; }
    const HttpHeader& GetHeader() const { return header_; }

    /// What remains of `part` follows what was written before; copied. Before the transaction is
    /// submitted at any time, afterwards only while it reports that it is ready to write, once for
    /// each report: kInvalidState, changing nothing, else.
    result WriteBody(const Base::ByteBuffer& part);

  private:
    friend class HttpTransaction;

    explicit HttpRequest(std::string hostAddress) : hostAddress_(std::move(hostAddress)) {}

    std::string hostAddress_;
    std::string uri_;
    HttpMethod method_ = HttpMethod::kGet;
    HttpHeader header_;
    std::vector<Base::byte> unsent_;
    bool canWrite_ = true;
};

}  // namespace Osp::Net::Http
