#include "application_library.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace Host {

std::string PackageFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "" : program.parent_path().parent_path().string();
}

EntryFunction LoadApplication(const std::string& packageFolder, std::string& error) {
    const std::string path = packageFolder + "/lib/libkivo-camera.so";
    // Never unloaded: it would have to outlive everything that it has registered.
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const entry = library == nullptr ? nullptr : dlsym(library, "OspMain");
    if (entry == nullptr) error = dlerror();
    return reinterpret_cast<EntryFunction>(entry);
}

}  // namespace Host
