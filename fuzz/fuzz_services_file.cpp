// Any text as a services file: what it yields goes into URLs.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "host/services.h"
#include "osp/net/address.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::string_view kAllowed =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-.:[]";
    const auto services = Host::ParseServices({reinterpret_cast<const char*>(data), size});
    if (!services) {
        if (services.Why().message.empty()) std::abort();
        return 0;
    }
    if ((*services).hosts.size() != 5) std::abort();
    for (const auto& [name, host] : (*services).hosts) {
        if (host.find_first_not_of(kAllowed) != std::string::npos) std::abort();
        if (!Osp::Net::ParseServer("https://" + host)) std::abort();
    }
    return 0;
}
