#include "host/application_library.h"

#include <dlfcn.h>
#include <filesystem>
#include <system_error>

namespace Host {

std::string PackageFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "" : program.parent_path().parent_path().string();
}

void* LoadSymbol(const std::string& path, const char* symbol, std::string& error) {
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const address = library == nullptr ? nullptr : dlsym(library, symbol);
    if (address == nullptr) error = dlerror();
    return address;
}

EntryFunction LoadApplication(const std::string& packageFolder, std::string& error) {
    return reinterpret_cast<EntryFunction>(
        LoadSymbol(packageFolder + "/lib/libkivo-camera.so", "OspMain", error));
}

}  // namespace Host
