// A button whose action is under way.
#pragma once

#include "ui/overlay.h"

namespace Kivo {

/// Disables a button of the overlay, and enables it again at its own end: a device that takes its
/// time gets no second press. The overlay outlives it.
class ButtonPause {
  public:
    ButtonPause(Overlay& overlay, int id) : overlay_(overlay), id_(id) { Enable(false); }
    ~ButtonPause() { Enable(true); }
    ButtonPause(const ButtonPause&) = delete;
    ButtonPause& operator=(const ButtonPause&) = delete;

  private:
    // The buttons that are paused exist, so that there is nothing to fail.
    void Enable(bool enable) { (void)overlay_.SetButtonEnabled(id_, enable); }

    Overlay& overlay_;
    int id_;
};

}  // namespace Kivo
