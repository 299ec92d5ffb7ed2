#include "host/modules/application_library.h"

#include <dlfcn.h>
#include <filesystem>
#include <system_error>

namespace Host {

std::string PackageFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "" : program.parent_path().parent_path().string();
}

Outcome<void*> LoadSymbol(const std::string& path, const char* symbol) {
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const address = library == nullptr ? nullptr : dlsym(library, symbol);
    if (address == nullptr) return Failure{dlerror()};
    return address;
}

Outcome<EntryFunction> LoadApplication(const std::string& packageFolder) {
    Outcome<void*> entry = LoadSymbol(packageFolder + "/lib/libkivo-camera.so", "OspMain");
    if (!entry) return entry.Why();
    return reinterpret_cast<EntryFunction>(*entry);
}

}  // namespace Host
