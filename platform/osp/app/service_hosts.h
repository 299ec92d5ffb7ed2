// The services that the device was set up with.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "osp/base/service.h"

namespace Osp::App {

/// The host's. Loop thread only.
class ServiceHosts : public Service<ServiceHosts> {
  public:
    /// By the names of services, in the form of Net::ParseAddress.
    explicit ServiceHosts(std::map<std::string, std::string> hosts) : hosts_(std::move(hosts)) {}

    /// Empty for a service that is not there.
    std::string Find(const std::string& name) const {
        const auto found = hosts_.find(name);
        return found == hosts_.end() ? std::string() : found->second;
    }

  private:
    std::map<std::string, std::string> hosts_;
};

}  // namespace Osp::App
