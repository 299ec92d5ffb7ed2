#include <chrono>
#include <memory>
#include <pipewire/pipewire.h>

#include "backends/pipewire/pipewire_connection.h"
#include "backends/pipewire/pipewire_problems.h"
#include "backends/pipewire/pipewire_source.h"
#include "backends/v4l2/video_files.h"
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
    PipewireFacts Facts(const BackendReport& report) const;

    PipewireConnection connection_;
};

BackendReport PipewireBackend::Look(bool withUsers) {
    connection_.WaitUntilKnown(kLongestLook);
    const PipewireConnection::Lock lock(connection_);
    BackendReport report;
    report.notes.push_back(std::string("library ") + pw_get_library_version());
    if (const PipewireGraph* const graph = connection_.Graph()) {
        for (const PipewireCamera* camera : graph->Cameras()) {
            report.cameras.push_back(camera->info);
            if (withUsers) report.cameras.back().users = graph->UsersOf(*camera);
        }
    }
    Explain(Facts(report), report);
    return report;
}

/// With the lock held.
PipewireFacts PipewireBackend::Facts(const BackendReport& report) const {
    const PipewireGraph* const graph = connection_.Graph();
    PipewireFacts facts;
    facts.isSandboxed = connection_.IsSandboxed();
    facts.isConnected = graph != nullptr;
    facts.isThroughPortal = connection_.TakenWay() == PipewireConnection::Way::kPortal;
    facts.error = connection_.Error();
    facts.portal = connection_.Portals() ? &*connection_.Portals() : nullptr;
    facts.hasSessionManager = graph != nullptr && graph->HasSessionManager();
    facts.hasCameras = !report.cameras.empty();
    if (facts.hasCameras) return facts;
    facts.fileProblems = ProblemsWithFiles();
    return facts;
}

}  // namespace

}  // namespace Osp::Media

extern "C" Osp::Media::CameraBackend* OspMakeCameraBackend(const char*) {
    pw_init(nullptr, nullptr);
    return new Osp::Media::PipewireBackend;
}
