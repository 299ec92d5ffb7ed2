// Display power.
#pragma once

#include <osp/base/result.h>
#include <osp/system/i_screen_event_listener.h>

namespace Osp::System {

/// Everything succeeds at once. Loop thread only.
class PowerManager {
  public:
    /// Keeps the screen from switching itself off while the application is in the foreground, until
    /// it is called with false. `dimming` makes no difference here.
    static result KeepScreenOnState(bool keepOn, bool dimming);
    /// `listener` is not owned; null removes it. It is never called, because this device does not
    /// report that its display is switched.
    static result SetScreenEventListener(IScreenEventListener* listener);
};

}  // namespace Osp::System
