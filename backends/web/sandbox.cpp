#include "backends/web/sandbox.h"

#include <filesystem>
#include <gio/gio.h>
#include <sstream>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "osp/base/owner.h"

namespace Osp::Web {

namespace {

using Text = Base::Owner<char, g_free>;
using Error = Base::Owner<GError, g_error_free>;

constexpr const char* kBusVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr const char* kNoBus = "disabled:";

std::string Sentence(const std::string& reason) {
    std::istringstream lines(reason);
    std::string first;
    std::getline(lines, first);
    return "The sandbox of the web engine cannot be started: " + first + ".";
}

/// With what the engine asks of it.
std::string TryToStart() {
    const char* const arguments[] = {"bwrap",
                                     "--ro-bind",
                                     "/",
                                     "/",
                                     "--proc",
                                     "/proc",
                                     "--dev",
                                     "/dev",
                                     "--unshare-pid",
                                     "--unshare-uts",
                                     "--unshare-net",
                                     "--die-with-parent",
                                     "--",
                                     "true",
                                     nullptr};
    char* written = nullptr;
    GError* failure = nullptr;
    int status = 0;
    const bool hasRun =
        g_spawn_sync(nullptr, const_cast<char**>(arguments), nullptr,
                     static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL),
                     nullptr, nullptr, nullptr, &written, &status, &failure) != FALSE;
    const Text errors(written);
    const Error error(failure);
    if (!hasRun) return Sentence(error->message);
    if (status == 0) return "";
    return Sentence(*errors.get() == '\0' ? "bwrap failed" : errors.get());
}

}  // namespace

std::string WhyNoSandbox() {
    for (const char* program : {"bwrap", "xdg-dbus-proxy"}) {
        const Text path(g_find_program_in_path(program));
        if (!path) return Sentence(std::string(program) + " is not installed");
    }
    return TryToStart();
}

void ForgetMissingBus() {
    const char* const named = g_getenv(kBusVariable);
    const std::string address =
        named != nullptr ? named : std::string("unix:path=") + g_get_user_runtime_dir() + "/bus";
    GIOStream* const stream =
        g_dbus_address_get_stream_sync(address.c_str(), nullptr, nullptr, nullptr);
    if (stream != nullptr) return g_object_unref(stream);
    g_setenv(kBusVariable, kNoBus, TRUE);
}

void RemoveSandboxTraces() {
    namespace fs = std::filesystem;
    const fs::path runtime = g_get_user_runtime_dir();
    const fs::path instances = runtime / ".flatpak";
    const std::string own = "webkit-" + std::to_string(getpid()) + "-";
    std::error_code error;
    std::vector<fs::path> traces;
    for (const auto& entry : fs::directory_iterator(instances, error)) {
        if (entry.path().filename().string().starts_with(own)) traces.push_back(entry.path());
    }
    for (const fs::path& trace : traces) fs::remove_all(trace, error);
    // Only while nobody else's are there.
    for (const fs::path& folder : {instances, runtime / "webkitgtk"}) fs::remove(folder, error);
}

}  // namespace Osp::Web
