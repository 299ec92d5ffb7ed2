// The application's place on the screen.
#pragma once

#include <osp/ui/controls/frame.h>

namespace Osp::App {

class Access;

/// Made by the platform before the application, one a run. Loop thread only.
class AppFrame {
  public:
    AppFrame(const AppFrame&) = delete;
    AppFrame& operator=(const AppFrame&) = delete;

    /// Owned by this object.
    Ui::Controls::Frame* GetFrame() { return &frame_; }

  private:
    friend class Access;

    AppFrame() = default;

    Ui::Controls::Frame frame_;
};

}  // namespace Osp::App
