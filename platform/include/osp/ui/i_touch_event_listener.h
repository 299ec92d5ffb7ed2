// Receives touches on a control.
#pragma once

#include <osp/graphics/point.h>

namespace Osp::Ui {

class Control;

/// Positions are screen pixels, clamped to the screen; a touch stays with the control on which it
/// went down. From the loop.
class ITouchEventListener {
  public:
    virtual ~ITouchEventListener() = default;
    virtual void OnTouchPressed(const Control& source, const Graphics::Point& position) = 0;
    virtual void OnTouchMoved(const Control& source, const Graphics::Point& position) = 0;
    virtual void OnTouchReleased(const Control& source, const Graphics::Point& position) = 0;
};

}  // namespace Osp::Ui
