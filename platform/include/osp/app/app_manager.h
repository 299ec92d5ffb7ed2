// The other programs of the device.
#pragma once

#include <osp/app/app_control.h>
#include <osp/base/string.h>

namespace Osp::App {

/// Loop thread only.
class AppManager {
  public:
    /// A new object, the caller's; null where there is nothing that could do it. Only
    /// APPCONTROL_EMAIL with OPERATION_EDIT is ever found. Where it is not, the hand-over has
    /// failed already: the user is told, and the application sent to the background and back.
    static AppControl* FindAppControlN(const Base::String& appControlId,
                                       const Base::String& operationId);
};

}  // namespace Osp::App
