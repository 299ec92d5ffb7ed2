// Routes touches and keys to controls.
#pragma once

#include <memory>

#include <osp/graphics/point.h>
#include <osp/ui/control.h>
#include <osp/ui/key_code.h>

#include "base/service.h"

namespace Osp::Ui {

/// The host feeds it from the loop. While a panel is being presented, input waits like every
/// application event; while a message box waits, only the box gets any.
class Input : public Service<Input> {
  public:
    /// Positions are clamped to the screen. One finger: a press while pressed moves it.
    void Press(Graphics::Point position);
    void Move(Graphics::Point position);
    void Release(Graphics::Point position);
    /// The finger was taken away by the system: what was pressed is released without an action.
    void Cancel();

    void KeyPress(KeyCode keyCode);
    void KeyRelease(KeyCode keyCode);

  private:
    bool MustWait() const;
    Control* Target() const;
    void ReleaseAt(Graphics::Point position, bool mayAct);

    std::weak_ptr<Control*> target_;
    bool isDown_ = false;
    Graphics::Point last_;
};

}  // namespace Osp::Ui
