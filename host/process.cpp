#include "host/process.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include "host/outcome.h"

namespace Host {

namespace {

constexpr const char* kFolderVariables[] = {"HOME",           "XDG_DATA_HOME",  "XDG_CONFIG_HOME",
                                            "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"};

void OpenStandardDescriptors() {
    int descriptor = 0;
    do {
        descriptor = open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0) close(descriptor);
}

}  // namespace

void PrepareProcess() {
#ifdef __GLIBC__
    // A heap for each thread would take 64 MB of address space each, and pictures lie in none.
    mallopt(M_ARENA_MAX, 1);
#endif
    OpenStandardDescriptors();
    for (const int ignored : {SIGXFSZ, SIGPIPE}) std::signal(ignored, SIG_IGN);
    for (const char* name : kFolderVariables) {
        const char* const value = std::getenv(name);
        if (value != nullptr && *value != '/') unsetenv(name);
    }
}

int FinishOutput(int exitCode) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return exitCode;
    std::fprintf(stderr, "kivo-camera: standard output could not be written\n");
    return exitCode == 0 ? kExitFailure : exitCode;
}

}  // namespace Host
