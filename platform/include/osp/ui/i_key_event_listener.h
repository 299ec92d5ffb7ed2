// Receives hardware keys.
#pragma once

#include <osp/ui/key_code.h>

namespace Osp::Ui {

class Control;

/// Only the current form's listeners are called. From the loop.
class IKeyEventListener {
  public:
    virtual ~IKeyEventListener() = default;
    virtual void OnKeyPressed(const Control& source, KeyCode keyCode) = 0;
    virtual void OnKeyReleased(const Control& source, KeyCode keyCode) = 0;
    /// Never called by this device, on which no key has a second meaning.
    virtual void OnKeyLongPressed(const Control& source, KeyCode keyCode) = 0;
};

}  // namespace Osp::Ui
