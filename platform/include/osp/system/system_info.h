// Facts about the device.
#pragma once

#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Osp::System {

/// Loop thread only.
class SystemInfo {
  public:
    /// "CameraCount": cameras found. kKeyNotFound, leaving `value` alone, for any other key.
    static result GetValue(const Base::String& key, int& value);
};

}  // namespace Osp::System
