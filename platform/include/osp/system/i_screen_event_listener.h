// Hears when the display is switched on and off.
#pragma once

namespace Osp::System {

/// From the loop.
class IScreenEventListener {
  public:
    virtual ~IScreenEventListener() = default;
    virtual void OnScreenOn() = 0;
    virtual void OnScreenOff() = 0;
};

}  // namespace Osp::System
