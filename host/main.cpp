// The program: command line, then the application in a window or headless.
#include <cstdio>
#include <glib-unix.h>
#include <memory>
#include <optional>
#include <string>

#include "application_library.h"
#include "diagnose.h"
#include "machine.h"
#include "options.h"
#include "script_driver.h"
#include "script_file.h"
#include "show_recorder.h"
#include "window_module.h"

namespace Host {

namespace {

int Fail(const std::string& message) {
    std::fprintf(stderr, "kivo-camera: %s\n", message.c_str());
    return 1;
}

gboolean OnSignal(gpointer) {
    Osp::App::Lifecycle::Current().Terminate(true);
    return G_SOURCE_CONTINUE;
}

int RunApplication(const Options& options, Machine& machine, EntryFunction entry) {
    std::string error;
    std::unique_ptr<Window> window;
    if (!options.isHeadless) {
        window = OpenWindow(options.isFullscreen, error);
        if (!window) return Fail(error);
    }
    ShowRecorder recorder(window ? &window->GetPresenter() : nullptr);

    ScriptQueue queue;
    std::unique_ptr<ScriptFile> script;
    std::optional<ScriptDriver> driver;
    bool hasFailed = false;
    if (options.script) {
        script = OpenScript(*options.script, queue, error);
        if (!script) return Fail(error);
        driver.emplace(machine.GetLoop(), machine.GetVirtualClock(), queue,
                       CommandContext{recorder}, [&](const std::optional<std::string>& failure) {
                           if (failure) hasFailed = Fail(*failure) != 0;
                           Osp::App::Lifecycle::Current().Terminate(false);
                       });
    }
    const guint signals[] = {g_unix_signal_add(SIGINT, OnSignal, nullptr),
                             g_unix_signal_add(SIGTERM, OnSignal, nullptr)};
    const int exitCode = machine.Run(entry);
    for (const guint signal : signals) g_source_remove(signal);
    return hasFailed ? 1 : exitCode;
}

int Main(int argc, char** argv) {
    const Parsed parsed = ParseCommandLine(argc, argv);
    if (parsed.exitCode) return *parsed.exitCode;
    const std::string package = PackageFolder();
    std::string error;
    const auto machine = Machine::Make(parsed.options, package + "/share/kivo-camera/Res", error);
    if (!machine) return Fail(error);
    if (parsed.options.listCameras) return ListCameras();
    if (parsed.options.diagnose) return Diagnose(package);
    const EntryFunction entry = LoadApplication(package, error);
    if (entry == nullptr) return Fail(error);
    return RunApplication(parsed.options, *machine, entry);
}

}  // namespace

}  // namespace Host

int main(int argc, char** argv) {
    return Host::Main(argc, argv);
}
