#include "osp/io/removable_medium.h"

#include <filesystem>
#include <fstream>
#include <gio/gunixmounts.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <system_error>
#include <unistd.h>

#include "osp/base/owner.h"

namespace Osp::Io {

namespace {

namespace fs = std::filesystem;

std::string FirstWord(const fs::path& file) {
    std::ifstream stream(file);
    std::string word;
    stream >> word;
    return word;
}

bool IsWritableMedium(GUnixMountEntry* mount) {
    const char* folder = g_unix_mount_get_mount_path(mount);
    struct stat status;
    return !g_unix_mount_is_readonly(mount) && g_unix_mount_guess_should_display(mount) &&
           stat(folder, &status) == 0 && IsRemovableDevice("/sys", status.st_dev) &&
           access(folder, W_OK | X_OK) == 0;
}

void FreeMounts(GList* mounts) {
    g_list_free_full(
        mounts, [](gpointer mount) { g_unix_mount_free(static_cast<GUnixMountEntry*>(mount)); });
}

}  // namespace

bool IsRemovableDevice(const std::string& sysFolder, dev_t device) {
    std::error_code error;
    const fs::path link = fs::path(sysFolder) / "dev/block" /
                          (std::to_string(major(device)) + ":" + std::to_string(minor(device)));
    fs::path disk = fs::canonical(link, error);
    if (error) return false;
    if (fs::exists(disk / "partition", error)) disk = disk.parent_path();
    // Built-in card readers do not mark their cards removable, nor do disks on USB.
    return FirstWord(disk / "removable") == "1" || FirstWord(disk / "device/type") == "SD" ||
           disk.string().find("/usb") != std::string::npos;
}

std::string FindRemovableMedium() {
    const Base::Owner<GList, FreeMounts> mounts(g_unix_mounts_get(nullptr));
    for (GList* item = mounts.get(); item != nullptr; item = item->next) {
        auto* mount = static_cast<GUnixMountEntry*>(item->data);
        if (IsWritableMedium(mount)) return g_unix_mount_get_mount_path(mount);
    }
    return "";
}

}  // namespace Osp::Io
