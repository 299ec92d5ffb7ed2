// HTTP through libcurl, as a module.
#include <curl/curl.h>
#include <fstream>
#include <iterator>
#include <memory>
#include <new>
#include <string>

#include "backends/http/curl_reactor.h"
#include "backends/http/curl_transfer.h"
#include "osp/net/transport.h"

namespace Osp::Http {

namespace {

std::string ReadText(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The system's and those of `file` as one text, because a handle takes but one; empty without a
/// file. A folder of the system's is looked at all the same.
std::string GatherAuthorities(const std::string& file) {
    if (file.empty()) return {};
    const curl_version_info_data* const about = curl_version_info(CURLVERSION_NOW);
    const std::string system = about->cainfo == nullptr ? "" : ReadText(about->cainfo);
    return system + "\n" + ReadText(file);
}

class CurlTransport : public Net::Transport {
  public:
    explicit CurlTransport(const Net::TransportOptions& options)
        : settings_{options.connectLimit, options.idleLimit,
                    GatherAuthorities(options.trust.authorityFile)} {}

    std::unique_ptr<Net::CookieJar> MakeCookieJar() override {
        return std::make_unique<CurlCookies>();
    }

    std::unique_ptr<Net::Transfer> Start(const Net::OutgoingRequest& request,
                                         Net::TransferClient& client) override try {
        return std::make_unique<CurlTransfer>(settings_, reactor_, request, client);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }

  private:
    TransferSettings settings_;
    CurlReactor reactor_;
};

}  // namespace

}  // namespace Osp::Http

extern "C" Osp::Net::Transport* OspMakeTransport(const Osp::Net::TransportOptions& options) {
    // Never undone: the module stays loaded, and a thread may still be asking for an address.
    static const bool isReady = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return isReady ? new Osp::Http::CurlTransport(options) : nullptr;
}
