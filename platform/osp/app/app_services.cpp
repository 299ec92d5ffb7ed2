#include <osp/app/app_services.h>

#include "osp/app/service_hosts.h"

namespace Osp::App {

result AppServices::GetHost(const Base::String& name, Base::String& host) {
    if (!ServiceHosts::IsInstalled()) return result::kKeyNotFound;
    const std::string found = ServiceHosts::Current().Find(name.ToUtf8());
    if (found.empty()) return result::kKeyNotFound;
    host = Base::String(found);
    return result::kSuccess;
}

}  // namespace Osp::App
