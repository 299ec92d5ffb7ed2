// The application's place on the screen.
#pragma once

#include <osp/ui/controls/frame.h>

namespace Osp::App {

class AppFrame {
  public:
    /// Owned by this object.
    Ui::Controls::Frame* GetFrame() { return &frame_; }

  private:
    Ui::Controls::Frame frame_;
};

}  // namespace Osp::App
