#include "backends/web/authorities.h"

namespace Osp::Web {

Authorities::Authorities(const std::string& authorityFile) {
    if (authorityFile.empty()) return;
    database_.reset(g_tls_file_database_new(authorityFile.c_str(), nullptr));
}

bool Authorities::Vouches(GTlsCertificate* certificate, const std::string& host) const {
    if (!database_) return false;
    const Base::Owner<GSocketConnectable, g_object_unref> identity(
        g_network_address_new(host.c_str(), 443));
    const GTlsCertificateFlags wrong = g_tls_database_verify_chain(
        database_.get(), certificate, G_TLS_DATABASE_PURPOSE_AUTHENTICATE_SERVER, identity.get(),
        nullptr, G_TLS_DATABASE_VERIFY_NONE, nullptr, nullptr);
    return wrong == G_TLS_CERTIFICATE_NO_FLAGS;
}

}  // namespace Osp::Web
