// The platform's own side of the application's objects.
#pragma once

#include <memory>

#include <osp/app/app_frame.h>
#include <osp/app/app_registry.h>

#include "osp/app/registry_file.h"

namespace Osp::App {

/// Makes what applications are only lent.
class Access {
  public:
    /// `file` is not owned and outlives the registry.
    static AppRegistry MakeRegistry(RegistryFile& file) { return AppRegistry(file); }
    static std::unique_ptr<AppFrame> MakeFrame() { return std::unique_ptr<AppFrame>(new AppFrame); }
};

}  // namespace Osp::App
