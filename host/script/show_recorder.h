// Screenshots, and a picture of every panel that is presented.
#pragma once

#include <string>

#include "host/outcome.h"
#include "osp/ui/screen.h"

namespace Host {

/// Writes the composed screen to a PNG.
Outcome<> SaveScreenshot(const std::string& path);

/// Stands between the screen and its real presenter, if there is one. Loop thread only.
class ShowRecorder : public Osp::Ui::Presenter {
  public:
    /// `next` may be null and is not owned.
    explicit ShowRecorder(Osp::Ui::Presenter* next);
    ~ShowRecorder() override;

    /// From here on every presented show leaves DIR/show-0000.png and so on.
    Outcome<> RecordTo(const std::string& folder);

    void FrameWanted() override;
    void PresentNow() override;

  private:
    Osp::Ui::Presenter* next_;
    std::string folder_;  // empty: not recording
    int count_ = 0;
};

}  // namespace Host
