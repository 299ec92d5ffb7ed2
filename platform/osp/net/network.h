// The device's way to servers.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "osp/base/service.h"
#include "osp/net/transport.h"

namespace Osp::Net {

/// Loop thread only.
class Network : public Service<Network> {
  public:
    /// Makes what carries requests, or null.
    using Load = std::function<std::unique_ptr<Transport>(const Trust& trust)>;

    Network(Trust trust, Load load) : trust_(std::move(trust)), load_(std::move(load)) {}

    const Trust& GetTrust() const { return trust_; }
    /// Loaded when it is wanted first; null when it cannot be had.
    Transport* GetTransport() {
        if (!transport_) transport_ = load_(trust_);
        return transport_.get();
    }

  private:
    Trust trust_;
    Load load_;
    std::unique_ptr<Transport> transport_;
};

}  // namespace Osp::Net
