// The program: command line, then the application in a window or headless.
#include <csignal>
#include <cstdio>
#include <glib-unix.h>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/cameras/diagnose.h"
#include "host/machine.h"
#include "host/modules/application_library.h"
#include "host/modules/web_module.h"
#include "host/modules/window_module.h"
#include "host/options.h"
#include "host/process.h"
#include "host/script/script_driver.h"
#include "host/script/script_file.h"
#include "host/script/show_recorder.h"

namespace Host {

namespace {

int Fail(const Failure& failure) {
    std::fprintf(stderr, "kivo-camera: %s\n", failure.message.c_str());
    return failure.exitCode;
}

// What ends the application as a user would.
constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP};

gboolean OnSignal(gpointer) {
    Osp::App::Lifecycle::Current().Terminate(true);
    return G_SOURCE_CONTINUE;
}

/// The ending signals, for as long as it lives.
class SignalWatch {
  public:
    SignalWatch() {
        for (const int signal : kEndingSignals) {
            // Whoever had it ignored wants the program to outlive it.
            struct sigaction present {};
            sigaction(signal, nullptr, &present);
            if (present.sa_handler == SIG_IGN) continue;
            sources_.push_back(g_unix_signal_add(signal, OnSignal, nullptr));
        }
    }
    ~SignalWatch() {
        for (const guint source : sources_) g_source_remove(source);
    }
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

  private:
    std::vector<guint> sources_;
};

int RunApplication(const Options& options, Machine& machine, EntryFunction entry) {
    std::unique_ptr<Osp::Ui::Window> window;
    if (!options.isHeadless) {
        auto opened = OpenWindow(options.isFullscreen);
        if (!opened) return Fail(opened.Why());
        window = std::move(*opened);
    }
    WebModule web(window.get(), {options.authorities});
    const Osp::Web::WebEngine::Installed installedWeb(web);
    ShowRecorder recorder(window ? &window->GetPresenter() : nullptr);

    ScriptQueue queue;
    std::unique_ptr<ScriptFile> script;
    std::optional<ScriptDriver> driver;
    bool hasFailed = false;
    if (options.script) {
        auto opened = OpenScript(*options.script, queue);
        if (!opened) return Fail(opened.Why());
        script = std::move(*opened);
        driver.emplace(machine.GetLoop(), machine.GetVirtualClock(), queue,
                       CommandContext{recorder, machine.GetCameraModules()},
                       [&](const Outcome<>& outcome) {
                           if (!outcome) hasFailed = Fail(outcome.Why()) != 0;
                           Osp::App::Lifecycle::Current().Terminate(false);
                       });
    }
    const SignalWatch signals;
    const int exitCode = machine.Run(entry);
    return hasFailed ? kExitFailure : exitCode;
}

int Run(const Options& options, const std::string& package) {
    const std::string resources = package + "/share/kivo-camera/Res";
    if (options.listCameras || options.diagnose) {
        auto diagnosis = Diagnosis::Make(options, resources);
        if (!diagnosis) return Fail(diagnosis.Why());
        return options.listCameras ? (*diagnosis)->ListCameras() : (*diagnosis)->Print(package);
    }
    auto machine = Machine::Make(options, resources);
    if (!machine) return Fail(machine.Why());
    auto entry = LoadApplication(package);
    if (!entry) return Fail(entry.Why());
    return RunApplication(options, **machine, *entry);
}

int Main(int argc, char** argv) {
    PrepareProcess();
    const Parsed parsed = ParseCommandLine(argc, argv);
    if (parsed.exitCode) return FinishOutput(*parsed.exitCode);
    try {
        return FinishOutput(Run(parsed.options, PackageFolder()));
    } catch (const std::bad_alloc&) {
        return Fail({"there is not enough memory"});
    }
}

}  // namespace

}  // namespace Host

int main(int argc, char** argv) {
    return Host::Main(argc, argv);
}
