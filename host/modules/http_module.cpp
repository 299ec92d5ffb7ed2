#include "host/modules/http_module.h"

#include "host/modules/application_library.h"

namespace Host {

using Osp::Net::Transport;

Outcome<std::unique_ptr<Transport>> LoadTransport(const Osp::Net::TransportOptions& options) {
    Outcome<void*> maker =
        LoadSymbol(PackageFolder() + "/lib/libkivo-http.so", Osp::Net::kMakeTransportSymbol);
    if (!maker) return maker.Why();
    const auto makeTransport = reinterpret_cast<Osp::Net::MakeTransportFunction>(*maker);
    std::unique_ptr<Transport> transport(makeTransport(options));
    if (transport) return transport;
    return Failure{"HTTP cannot be used here"};
}

}  // namespace Host
