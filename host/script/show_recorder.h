// Screenshots, and a picture of every panel that is presented.
#pragma once

#include <optional>
#include <string>

#include "osp/ui/screen.h"

namespace Host {

/// Writes the composed screen to a PNG; returns why that failed.
std::optional<std::string> SaveScreenshot(const std::string& path);

/// Stands between the screen and its real presenter, if there is one. Loop thread only.
class ShowRecorder : public Osp::Ui::Presenter {
  public:
    /// `next` may be null and is not owned.
    explicit ShowRecorder(Osp::Ui::Presenter* next);
    ~ShowRecorder() override;

    /// From here on every presented show leaves DIR/show-0000.png and so on.
    std::optional<std::string> RecordTo(const std::string& folder);

    void FrameWanted() override;
    void PresentNow() override;

  private:
    Osp::Ui::Presenter* next_;
    std::string folder_;  // empty: not recording
    int count_ = 0;
};

}  // namespace Host
