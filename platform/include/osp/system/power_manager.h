// Display power.
#pragma once

#include <osp/base/result.h>
#include <osp/system/i_screen_event_listener.h>

namespace Osp::System {

class PowerManager {
  public:
    /// Keeps the screen from switching itself off while the application is in the foreground.
    /// `dimming` allows it to dim.
    static result KeepScreenOnState(bool keepOn, bool dimming);
    /// `listener` is not owned; null removes it.
    static result SetScreenEventListener(IScreenEventListener* listener);
};

}  // namespace Osp::System
