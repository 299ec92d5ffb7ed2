#include <chrono>
#include <memory>
#include <pipewire/pipewire.h>

#include "backends/pipewire/pipewire_connection.h"
#include "backends/pipewire/pipewire_source.h"
#include "osp/media/live/camera_backend.h"

namespace Osp::Media {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestLook = 1s;

class PipewireBackend : public CameraBackend {
  public:
    BackendReport Look(bool withUsers) override;
    std::unique_ptr<VideoSource> Open(const std::string& id) override {
        return std::make_unique<PipewireSource>(connection_, id);
    }

  private:
    PipewireConnection connection_;
};

BackendReport PipewireBackend::Look(bool withUsers) {
    connection_.WaitUntilKnown(kLongestLook);
    const PipewireConnection::Lock lock(connection_);
    BackendReport report;
    report.notes.push_back(std::string("library ") + pw_get_library_version());
    const PipewireGraph* const graph = connection_.Graph();
    if (graph == nullptr) {
        report.problems.push_back("no PipeWire daemon answers: " + connection_.Error() +
                                  "; install pipewire and start its user service");
        return report;
    }
    for (const PipewireCamera* camera : graph->Cameras()) {
        report.cameras.push_back(camera->info);
        if (withUsers) report.cameras.back().users = graph->UsersOf(*camera);
    }
    if (!graph->HasSessionManager()) {
        report.problems.push_back(
            "no session manager runs beside the daemon, so that nothing is connected; install "
            "wireplumber and start its user service");
    }
    return report;
}

}  // namespace

}  // namespace Osp::Media

extern "C" Osp::Media::CameraBackend* OspMakeCameraBackend(const char*) {
    pw_init(nullptr, nullptr);
    return new Osp::Media::PipewireBackend;
}
