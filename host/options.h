// The command line.
#pragma once

#include <optional>
#include <string>

namespace Host {

enum class ClockKind { kReal, kVirtual };

struct Options {
    bool isHeadless = false;
    bool isFullscreen = false;
    bool listCameras = false;
    bool diagnose = false;
    bool isJson = false;  // of what those two print
    ClockKind clock = ClockKind::kReal;
    std::string dataFolder;        // empty: the user's own folders
    std::string primary = "auto";  // camera sources
    std::string secondary = "auto";
    std::string services;               // a file; empty: the package's
    std::string authorities;            // a file of trusted authorities; empty: the system's alone
    std::optional<std::string> script;  // a file, or "-" for standard input
};

/// What a command line means for the process.
struct Parsed {
    Options options;
    /// Set when there is nothing to run: after --help, --version or an error, which has been
    /// printed.
    std::optional<int> exitCode;
};

Parsed ParseCommandLine(int argc, char** argv);

}  // namespace Host
