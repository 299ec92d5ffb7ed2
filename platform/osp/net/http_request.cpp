#include <algorithm>
#include <glib.h>
#include <utility>

#include <osp/net/http/http_request.h>

#include "osp/net/request_body.h"

namespace Osp::Net::Http {

HttpRequest::HttpRequest(std::string hostAddress)
    : hostAddress_(std::move(hostAddress)), body_(std::make_unique<RequestBody>()) {}

HttpRequest::~HttpRequest() = default;

result HttpRequest::SetUri(const Base::String& uri) {
    std::string text = uri.ToUtf8();
    const bool isPrintable = std::ranges::all_of(text, [](char c) { return g_ascii_isgraph(c); });
    const bool isOnHost = text.starts_with(hostAddress_ + "/");
    if (!isPrintable || !isOnHost || text.find('#') != std::string::npos) {
        return result::kInvalidArgument;
    }
    uri_ = std::move(text);
    return result::kSuccess;
}

result HttpRequest::WriteBody(const Base::ByteBuffer& part) {
    return body_->Write(part.Remaining());
}

}  // namespace Osp::Net::Http
