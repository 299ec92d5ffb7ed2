// What a transaction has got.
#pragma once

#include <vector>

#include <osp/base/byte_buffer.h>

namespace Osp::Net::Http {

/// Belongs to its transaction.
class HttpResponse {
  public:
    /// As the server says, 200 for success; 0 before its answer.
    int GetStatusCode() const { return statusCode_; }
    /// The body: a new buffer, the caller's, all of which remains. Null for an empty body and
    /// without the memory. 8 MiB at most, more aborts the transaction.
    Base::ByteBuffer* ReadBodyN() const;

  private:
    friend class Exchange;
    friend class HttpTransaction;

    HttpResponse() = default;

    int statusCode_ = 0;
    std::vector<Base::byte> body_;
};

}  // namespace Osp::Net::Http
