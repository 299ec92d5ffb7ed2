// How full the battery is.
#pragma once

namespace Osp::System {

enum class BatteryLevel { kEmpty, kCritical, kLow, kMedium, kHigh, kFull };

}  // namespace Osp::System
