#include "host/options.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <glib.h>
#include <memory>
#include <system_error>
#include <utility>

#include "cmake/product.h"
#include "host/cameras/camera_sources.h"
#include "host/outcome.h"
#include "osp/base/owner.h"

namespace Host {

namespace {

// What GLib writes its results to.
struct Raw {
    Raw() = default;
    ~Raw() {
        for (gchar* text : {authorities, clock, data, primary, secondary, script, services}) {
            g_free(text);
        }
    }
    Raw(const Raw&) = delete;
    Raw& operator=(const Raw&) = delete;

    gboolean headless = FALSE;
    gboolean fullscreen = FALSE;
    gboolean listCameras = FALSE;
    gboolean diagnose = FALSE;
    gboolean json = FALSE;
    gboolean help = FALSE;
    gboolean version = FALSE;
    gchar* authorities = nullptr;
    gchar* clock = nullptr;
    gchar* data = nullptr;
    gchar* primary = nullptr;
    gchar* secondary = nullptr;
    gchar* script = nullptr;
    gchar* services = nullptr;
};

std::optional<std::string> Text(const gchar* text) {
    if (text == nullptr) return std::nullopt;
    return text;
}

Parsed Fail(const Failure& failure) {
    std::fprintf(stderr, "kivo-camera: %s\nTry 'kivo-camera --help'.\n", failure.message.c_str());
    return {{}, kExitUsage};
}

bool IsFolder(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

bool IsSwitchWithValue(const std::string& argument, const GOptionEntry* entries) {
    for (; entries->long_name != nullptr; ++entries) {
        const bool isSwitch = entries->arg == G_OPTION_ARG_NONE;
        if (isSwitch && argument.starts_with("--" + std::string(entries->long_name) + "=")) {
            return true;
        }
    }
    return false;
}

Outcome<Options> Interpret(const Raw& raw) {
    Options options;
    options.isHeadless = raw.headless;
    options.isFullscreen = raw.fullscreen;
    options.listCameras = raw.listCameras;
    options.diagnose = raw.diagnose;
    options.isJson = raw.json;
    options.dataFolder = Text(raw.data).value_or("");
    options.primary = Text(raw.primary).value_or("auto");
    options.secondary = Text(raw.secondary).value_or("auto");
    options.services = Text(raw.services).value_or("");
    options.authorities = Text(raw.authorities).value_or("");
    options.script = Text(raw.script);
    if (options.script && IsFolder(*options.script)) {
        return Failure{"the script " + *options.script + " is a folder"};
    }
    const std::string clock = Text(raw.clock).value_or(raw.headless ? "virtual" : "real");
    if (clock != "real" && clock != "virtual") return Failure{"--clock is 'real' or 'virtual'"};
    options.clock = clock == "real" ? ClockKind::kReal : ClockKind::kVirtual;
    if (options.isJson && !options.listCameras && !options.diagnose) {
        return Failure{"--json goes with --list-cameras or --diagnose"};
    }
    const bool looksOnly = options.listCameras || options.diagnose;
    for (const std::string& source : {options.primary, options.secondary}) {
        const Outcome<> check = CheckSource(source, looksOnly || options.clock == ClockKind::kReal);
        if (!check) return check.Why();
    }
    if (options.clock == ClockKind::kVirtual && !options.script && !looksOnly) {
        return Failure{"nothing would move the virtual clock: give a --script, or --clock real"};
    }
    return options;
}

using Entries = std::array<GOptionEntry, 15>;

Entries MakeEntries(Raw& raw, const std::string& primaryHelp) {
    return {{
        {"headless", 0, 0, G_OPTION_ARG_NONE, &raw.headless,
         "Run without a window; time is virtual unless --clock real is given", nullptr},
        {"fullscreen", 0, 0, G_OPTION_ARG_NONE, &raw.fullscreen, "Fill the whole screen", nullptr},
        {"data", 0, 0, G_OPTION_ARG_FILENAME, &raw.data, "Keep photographs and settings under DIR",
         "DIR"},
        {"primary", 0, 0, G_OPTION_ARG_STRING, &raw.primary, primaryHelp.c_str(), "SOURCE"},
        {"secondary", 0, 0, G_OPTION_ARG_STRING, &raw.secondary, "Front camera, likewise",
         "SOURCE"},
        {"services", 0, 0, G_OPTION_ARG_FILENAME, &raw.services,
         "Where the services to share with are, instead of the package's own file", "FILE"},
        {"ca", 0, 0, G_OPTION_ARG_FILENAME, &raw.authorities,
         "Trust the authorities in FILE (PEM) beside the system's", "FILE"},
        {"clock", 0, 0, G_OPTION_ARG_STRING, &raw.clock,
         "real, or virtual: only a script moves time", "KIND"},
        {"script", 0, 0, G_OPTION_ARG_FILENAME, &raw.script,
         "Run the commands in FILE, '-' for standard input", "FILE"},
        {"list-cameras", 0, 0, G_OPTION_ARG_NONE, &raw.listCameras, "List the cameras and end",
         nullptr},
        {"diagnose", 0, 0, G_OPTION_ARG_NONE, &raw.diagnose,
         "Print what the program found on this machine and end", nullptr},
        {"json", 0, 0, G_OPTION_ARG_NONE, &raw.json, "Let --list-cameras and --diagnose print JSON",
         nullptr},
        {"help", 'h', 0, G_OPTION_ARG_NONE, &raw.help, "Print this and end", nullptr},
        {"version", 0, 0, G_OPTION_ARG_NONE, &raw.version, "Print the version and end", nullptr},
        {nullptr, 0, 0, G_OPTION_ARG_NONE, nullptr, nullptr, nullptr},
    }};
}

Outcome<> Parse(GOptionContext* context, const Entries& entries, int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        // GLib takes a value for a plain switch and does not look at it.
        if (IsSwitchWithValue(argv[i], entries.data())) {
            return Failure{std::string("'") + argv[i] + "': this switch takes no value"};
        }
    }
    // The library's own help would end the process whether or not it could be printed.
    g_option_context_set_help_enabled(context, FALSE);
    g_option_context_add_main_entries(context, entries.data(), nullptr);
    GError* error = nullptr;
    if (!g_option_context_parse(context, &argc, &argv, &error)) {
        const Osp::Base::Owner<GError, g_error_free> owned(error);
        return Failure{error->message};
    }
    if (argc > 1) return Failure{std::string("unknown argument '") + argv[1] + "'"};
    return kDone;
}

}  // namespace

Parsed ParseCommandLine(int argc, char** argv) {
    Raw raw;
    const std::string primaryHelp = "Back camera: " + KnownSources() + " (there is no such camera)";
    const Entries entries = MakeEntries(raw, primaryHelp);
    const Osp::Base::Owner<GOptionContext, g_option_context_free> context(
        g_option_context_new("- the KIVO camera"));
    const Outcome<> parsed = Parse(context.get(), entries, argc, argv);
    if (!parsed) return Fail(parsed.Why());
    if (raw.help) {
        const Osp::Base::Owner<gchar, g_free> text(
            g_option_context_get_help(context.get(), TRUE, nullptr));
        std::fputs(text.get(), stdout);
        return {{}, 0};
    }
    if (raw.version) {
        std::printf("kivo-camera %s\n", Kivo::kVersion);
        return {{}, 0};
    }
    Outcome<Options> options = Interpret(raw);
    if (!options) return Fail(options.Why());
    return {std::move(*options), std::nullopt};
}

}  // namespace Host
