#include "osp/system/device.h"

#include <utility>

namespace Osp::System {

void Device::SetKeepScreenOnFunction(KeepScreenOnFunction function) {
    keepScreenOnFunction_ = std::move(function);
    if (keepScreenOnFunction_) keepScreenOnFunction_(keepOn_);
}

void Device::KeepScreenOn(bool keepOn) {
    keepOn_ = keepOn;
    if (keepScreenOnFunction_) keepScreenOnFunction_(keepOn);
}

}  // namespace Osp::System
