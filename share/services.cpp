#include "share/services.h"

#include <osp/app/app_services.h>

namespace Kivo {

using namespace Osp::Net::Http;
using Osp::Base::String;

String HostOf(const Service& service) {
    String host;
    (void)Osp::App::AppServices::GetHost(service.name, host);
    return host;
}

String UrlOf(const Service& service, const String& path) {
    String url(service.scheme);
    return url.Append("://").Append(HostOf(service)).Append(path);
}

Call OpenCall(const Service& service, HttpMethod method, const String& path,
              IHttpTransactionEventListener& listener) {
    auto session = std::make_unique<HttpSession>();
    if (Osp::Failed(session->Construct(HttpSessionMode::kNormal, nullptr, UrlOf(service, ""),
                                       nullptr, HttpCookieFlag::kEnabled))) {
        return {};
    }
    std::unique_ptr<HttpTransaction> transaction(session->OpenTransactionN());
    if (!transaction) return {};
    transaction->SetListener(&listener);
    transaction->GetRequest().SetMethod(method);
    if (Osp::Failed(transaction->GetRequest().SetUri(UrlOf(service, path)))) return {};
    return {std::move(session), std::move(transaction)};
}

}  // namespace Kivo
