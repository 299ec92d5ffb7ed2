// Where the services of this deployment are.
#pragma once

#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Osp::App {

/// The file of services that the device was set up with. Loop thread only.
class AppServices {
  public:
    /// The "host" or "host:port" of the service `name`. kKeyNotFound, leaving `host` alone, for a
    /// service that the file does not name.
    static result GetHost(const Base::String& name, Base::String& host);
};

}  // namespace Osp::App
