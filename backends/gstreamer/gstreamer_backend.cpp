#include <algorithm>
#include <array>
#include <chrono>
#include <gst/gst.h>
#include <memory>
#include <string>
#include <string_view>

#include "backends/gstreamer/camera_catalogue.h"
#include "backends/gstreamer/gstreamer_source.h"
#include "backends/v4l2/video_files.h"
#include "osp/media/live/camera_backend.h"

namespace Osp::Media {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestLook = 1s;

/// One way to cameras through GStreamer; its elements come in a package of the distribution's.
struct Way {
    std::string_view name;
    const char* provider;
    const char* element;
    const char* package;
    bool isOfFiles;  // its cameras are files of the kernel's, each for itself
};

constexpr std::array kWays = {
    Way{"v4l2", "v4l2deviceprovider", "v4l2src", "gstreamer1.0-plugins-good", true},
    Way{"libcamera", "libcameraprovider", "libcamerasrc", "gstreamer1.0-libcamera", false},
};

class GstreamerBackend : public CameraBackend {
  public:
    explicit GstreamerBackend(const Way& way) : way_(way), catalogue_(way.provider) {}

    BackendReport Look(bool withUsers) override;
    std::unique_ptr<VideoSource> Open(const std::string& id) override {
        return std::make_unique<GstreamerSource>(catalogue_, id);
    }

  private:
    void AddCamera(const CataloguedCamera& camera, bool withUsers, BackendReport& report) const;

    const Way& way_;
    CameraCatalogue catalogue_;
};

void GstreamerBackend::AddCamera(const CataloguedCamera& camera, bool withUsers,
                                 BackendReport& report) const {
    CameraInfo& info = report.cameras.emplace_back(camera.info);
    if (!camera.file.empty()) report.notes.push_back(info.id + " is " + camera.file);
    if (!withUsers || camera.file.empty()) return;
    info.users = UsersOf(camera.file);
    for (const std::string& user : info.users) {
        report.problems.push_back(info.name + " is busy while " + user +
                                  " sees through it; end that program if the camera is wanted");
    }
}

BackendReport GstreamerBackend::Look(bool withUsers) {
    BackendReport report;
    const bool isKnown = catalogue_.WaitUntilKnown(kLongestLook);
    for (const CataloguedCamera& camera : catalogue_.Cameras()) {
        AddCamera(camera, withUsers, report);
    }
    if (!isKnown) {
        report.problems.push_back("the cameras take long to answer; what is missing may come yet");
        return report;
    }
    const std::unique_ptr<gchar, decltype(&g_free)> version(gst_version_string(), g_free);
    report.notes.insert(report.notes.begin(), version.get());
    if (!catalogue_.HasProvider()) {
        report.problems.push_back(std::string("the element ") + way_.element +
                                  " is not installed; install " + way_.package);
    }
    if (way_.isOfFiles) {
        for (std::string& problem : ProblemsWithFiles()) report.problems.push_back(problem);
    } else if (catalogue_.HasProvider() && report.cameras.empty()) {
        report.problems.push_back(std::string(way_.name) +
                                  " has found no camera; see that its cable is in and that the "
                                  "system's device tree names the sensor");
    }
    return report;
}

}  // namespace

}  // namespace Osp::Media

extern "C" Osp::Media::CameraBackend* OspMakeCameraBackend(const char* name) {
    const auto way = std::ranges::find(Osp::Media::kWays, name, &Osp::Media::Way::name);
    return way == Osp::Media::kWays.end() ? nullptr : new Osp::Media::GstreamerBackend(*way);
}
