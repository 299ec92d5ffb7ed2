#include <vector>

#include <osp/net/http/http_session.h>
#include <osp/net/http/http_transaction.h>

#include "osp/net/exchange.h"
#include "osp/net/request_body.h"

namespace Osp::Net::Http {

HttpTransaction::HttpTransaction(HttpSession& session)
    : session_(session), request_(session.hostAddress_) {}

HttpTransaction::~HttpTransaction() {
    std::erase(session_.transactions_, this);
}

result HttpTransaction::Submit() {
    if (exchange_ || request_.uri_.empty()) return result::kInvalidState;
    const auto length = BodyLength(request_, reportsReadyToWrite_, request_.body_->Written());
    if (!length) return result::kInvalidArgument;
    exchange_ = std::make_unique<Exchange>(*this);
    exchange_->Begin(*length);
    return result::kSuccess;
}

}  // namespace Osp::Net::Http
