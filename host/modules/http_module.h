// HTTP, in a module of its own that is loaded at first use.
#pragma once

#include <memory>

#include "host/outcome.h"
#include "osp/net/transport.h"

namespace Host {

/// Fails when the module is missing or cannot work here.
Outcome<std::unique_ptr<Osp::Net::Transport>> LoadTransport(
    const Osp::Net::TransportOptions& options);

}  // namespace Host
