#include "backends/gstreamer/gstreamer_source.h"

#include <chrono>
#include <utility>

#include "backends/gstreamer/video_caps.h"

namespace Osp::Media {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestAnswer = 500ms;

}  // namespace

GstreamerSource::~GstreamerSource() {
    Watch({});
    Stop();
}

std::vector<VideoMode> GstreamerSource::Modes() const {
    const auto camera = catalogue_.Find(id_);
    return camera ? camera->info.modes : std::vector<VideoMode>();
}

result GstreamerSource::Start(const VideoMode& mode, std::shared_ptr<VideoSink> sink) {
    Stop();
    const auto camera = catalogue_.Find(id_);
    if (!camera) return result::kObjectNotFound;
    const auto limit = std::chrono::steady_clock::now() + kLongestAnswer;
    pipeline_ = std::make_shared<VideoPipeline>(std::move(sink));
    worker_.Post([pipeline = pipeline_, device = camera->device, mode] {
        const CapsOwner caps(gst_device_get_caps(device.get()));
        pipeline->Begin(Own(gst_device_create_element(device.get(), nullptr)),
                        CapsFor(mode, *caps));
    });
    controls_.Open(camera->file);
    const result r = pipeline_->AwaitAnswer(limit);
    if (Failed(r)) {
        Stop();
    } else {
        controls_.WaitUntilKnown(limit);
    }
    return r;
}

void GstreamerSource::Stop() {
    if (!pipeline_) return;
    pipeline_->Silence();
    worker_.Post([pipeline = std::move(pipeline_)] { pipeline->End(); });
    controls_.Close();
}

}  // namespace Osp::Media
