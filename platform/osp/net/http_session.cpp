#include <memory>
#include <utility>

#include <osp/net/http/http_session.h>

#include "osp/net/address.h"
#include "osp/net/transport.h"

namespace Osp::Net::Http {

HttpSession::HttpSession() = default;

HttpSession::~HttpSession() {
    while (!transactions_.empty()) delete transactions_.back();
}

result HttpSession::Construct(HttpSessionMode mode, const Base::String* proxyAddress,
                              const Base::String& hostAddress, const HttpHeader* commonHeader,
                              HttpCookieFlag cookieFlag) {
    if (!hostAddress_.empty()) return result::kInvalidState;
    if (mode != HttpSessionMode::kNormal || proxyAddress != nullptr) return result::kUnsupported;
    std::string address = hostAddress.ToUtf8();
    if (address.ends_with('/')) address.pop_back();
    if (!ParseServer(address)) return result::kInvalidArgument;
    hostAddress_ = std::move(address);
    if (commonHeader != nullptr) commonHeader_ = *commonHeader;
    cookieFlag_ = cookieFlag;
    return result::kSuccess;
}

HttpTransaction* HttpSession::OpenTransactionN() {
    if (hostAddress_.empty()) return nullptr;
    std::unique_ptr<HttpTransaction> transaction(new HttpTransaction(*this));
    transactions_.push_back(transaction.get());
    return transaction.release();
}

}  // namespace Osp::Net::Http
