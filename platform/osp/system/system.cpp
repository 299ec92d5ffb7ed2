#include <algorithm>
#include <fstream>
#include <sys/resource.h>
#include <unistd.h>

#include <osp/system/power_manager.h>
#include <osp/system/runtime_info.h>
#include <osp/system/system_info.h>
#include <osp/system/system_time.h>

#include "osp/base/event_loop.h"
#include "osp/base/trace.h"
#include "osp/system/device.h"

namespace Osp::System {

namespace {

long long PagesToBytes(long long pages) {
    return pages * sysconf(_SC_PAGESIZE);
}

long long AvailableMemory() {
    return PagesToBytes(sysconf(_SC_AVPHYS_PAGES));
}

long long AllocatedMemory() {
    std::ifstream statm("/proc/self/statm");
    long long total = 0;
    long long resident = 0;
    statm >> total >> resident;
    return PagesToBytes(resident);
}

long long MaxAllocatableMemory() {
    const long long installed = PagesToBytes(sysconf(_SC_PHYS_PAGES));
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return installed;
    return std::min(installed, static_cast<long long>(limit.rlim_cur));
}

struct RuntimeValue {
    const char* key;
    long long (*read)();
};
constexpr RuntimeValue kRuntimeValues[] = {
    {"AvailableMemory", AvailableMemory},
    {"AllocatedMemory", AllocatedMemory},
    {"MaxAllocatableMemory", MaxAllocatableMemory},
};

}  // namespace

result SystemInfo::GetValue(const Base::String& key, int& value) {
    if (key != "CameraCount") return result::kKeyNotFound;
    value = Device::Current().CameraCount();
    return result::kSuccess;
}

result RuntimeInfo::GetValue(const Base::String& key, long long& value) {
    const auto found = std::ranges::find_if(
        kRuntimeValues, [&key](const RuntimeValue& entry) { return key == entry.key; });
    if (found == std::end(kRuntimeValues)) return result::kKeyNotFound;
    value = found->read();
    Base::Trace::Value(found->key, value);
    return result::kSuccess;
}

result SystemTime::GetTicks(long long& ticks) {
    ticks = Base::EventLoop::Current().GetClock().EpochMs();
    return result::kSuccess;
}

result PowerManager::KeepScreenOnState(bool keepOn, bool) {
    Device::Current().KeepScreenOn(keepOn);
    return result::kSuccess;
}

// No listener is kept, because nothing here would ever call it.
result PowerManager::SetScreenEventListener(IScreenEventListener*) {
    return result::kSuccess;
}

}  // namespace Osp::System
