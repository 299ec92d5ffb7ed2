// One camera of GStreamer's.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "backends/gstreamer/camera_catalogue.h"
#include "backends/gstreamer/video_pipeline.h"
#include "backends/v4l2/device_controls.h"
#include "osp/base/serial_worker.h"
#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// Bound to an id, whether such a camera is there or not; an empty id is whichever comes first.
class GstreamerSource : public VideoSource {
  public:
    /// `catalogue` outlives the source.
    GstreamerSource(CameraCatalogue& catalogue, std::string id)
        : catalogue_(catalogue), id_(std::move(id)) {}
    ~GstreamerSource() override;

    bool IsThere() const override { return catalogue_.Find(id_).has_value(); }
    void Watch(std::function<void()> changed) override {
        catalogue_.Watch(this, id_, std::move(changed));
    }
    std::vector<VideoMode> Modes() const override;
    result Start(const VideoMode& mode, std::shared_ptr<VideoSink> sink) override;
    void Stop() override;
    bool Has(VideoControl control) const override { return controls_.Has(control); }
    result Set(VideoControl control, int value) override { return controls_.Set(control, value); }

  private:
    CameraCatalogue& catalogue_;
    const std::string id_;
    std::shared_ptr<VideoPipeline> pipeline_;  // null while nothing runs
    DeviceControls controls_;
    // A device is closed before it is opened again, however long that takes.
    Base::SerialWorker worker_;
};

}  // namespace Osp::Media
