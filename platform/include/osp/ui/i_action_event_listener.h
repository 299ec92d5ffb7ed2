// Receives the actions of buttons.
#pragma once

namespace Osp::Ui {

class Control;

class IActionEventListener {
  public:
    virtual ~IActionEventListener() = default;
    /// From the loop, after the touch that caused it has been released inside `source`.
    virtual void OnActionPerformed(const Control& source, int actionId) = 0;
};

}  // namespace Osp::Ui
