#include "bench/camera_run.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "host/machine.h"
#include "host/modules/application_library.h"
#include "host/script/script_driver.h"
#include "host/script/show_recorder.h"
#include "osp/base/trace.h"
#include "osp/ui/screen.h"

namespace Bench {

namespace {

/// Tells the trace when the screen has been shown.
class MarkingPresenter : public Osp::Ui::Presenter {
  public:
    void FrameWanted() override {}
    void PresentNow() override { Osp::Base::Trace::Mark("shown"); }
};

int Fail(const std::string& error) {
    std::fprintf(stderr, "benchmark: %s\n", error.c_str());
    return 1;
}

int RunIn(const std::string& folder, Host::ClockKind clock, Host::ScriptQueue& queue,
          const std::string& source) {
    Host::Options options;
    options.isHeadless = true;
    options.clock = clock;
    options.dataFolder = folder;
    options.primary = source;
    options.secondary = "none";
    const std::string package = Host::PackageFolder();
    auto made = Host::Machine::Make(options, package + "/share/kivo-camera/Res");
    if (!made) return Fail(made.Why().message);
    auto entry = Host::LoadApplication(package);
    if (!entry) return Fail(entry.Why().message);
    Host::Machine& machine = **made;
    MarkingPresenter presenter;
    Host::ShowRecorder recorder(&presenter);
    int failure = 0;
    Host::ScriptDriver driver(machine.GetLoop(), machine.GetVirtualClock(), queue,
                              Host::CommandContext{recorder, machine.GetCameraModules()},
                              [&failure](const auto& outcome) {
                                  if (!outcome) failure = Fail(outcome.Why().message);
                                  Osp::App::Lifecycle::Current().Terminate(false);
                              });
    const int exitCode = machine.Run(*entry);
    return failure != 0 ? failure : exitCode;
}

}  // namespace

int RunCamera(Host::ClockKind clock, Host::ScriptQueue& queue, const std::string& source) {
    // Beside the programs and not among temporary files, which may be in memory: syncing counts.
    std::string folder = Host::PackageFolder() + "/camera-bench-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) return Fail("no folder can be made beside the programs");
    const int exitCode = RunIn(folder, clock, queue, source);
    std::filesystem::remove_all(folder);
    return exitCode;
}

}  // namespace Bench
