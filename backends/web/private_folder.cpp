#include "backends/web/private_folder.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <glib.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace Osp::Web {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = "kivo-web-";

fs::path Place() {
    const char* const runtime = g_getenv("XDG_RUNTIME_DIR");
    return runtime != nullptr && access(runtime, W_OK) == 0 ? runtime : g_get_tmp_dir();
}

/// Of a folder's name with the number of its process in it.
bool IsOrphan(std::string_view name) {
    if (!name.starts_with(kPrefix)) return false;
    name.remove_prefix(kPrefix.size());
    int process = 0;
    const auto read = std::from_chars(name.data(), name.data() + name.size(), process);
    if (read.ec != std::errc{} || *read.ptr != '-' || process <= 0) return false;
    return kill(process, 0) != 0 && errno == ESRCH;
}

}  // namespace

PrivateFolder::PrivateFolder() {
    const std::string name = std::string(kPrefix) + std::to_string(getpid()) + "-XXXXXX";
    std::string path = Place() / name;
    if (g_mkdtemp_full(path.data(), 0700) != nullptr) path_ = path;
}

PrivateFolder::~PrivateFolder() {
    std::error_code error;
    if (!path_.empty()) fs::remove_all(path_, error);
}

void PrivateFolder::RemoveOrphans() {
    std::error_code error;
    std::vector<fs::path> orphans;
    for (const auto& entry : fs::directory_iterator(Place(), error)) {
        if (IsOrphan(entry.path().filename().string())) orphans.push_back(entry.path());
    }
    for (const fs::path& orphan : orphans) fs::remove_all(orphan, error);
}

}  // namespace Osp::Web
