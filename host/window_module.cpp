#include "window_module.h"

#include <dlfcn.h>

#include "application_library.h"

namespace Host {

std::unique_ptr<Window> OpenWindow(bool isFullscreen, std::string& error) {
    const std::string path = PackageFolder() + "/lib/libkivo-window.so";
    // Never unloaded: the toolkit does not support that.
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const maker = module == nullptr ? nullptr : dlsym(module, kMakeWindowSymbol);
    if (maker == nullptr) {
        error = dlerror();
        return nullptr;
    }
    std::unique_ptr<Window> window(reinterpret_cast<MakeWindowFunction>(maker)(isFullscreen));
    if (!window) error = "there is no display to open a window on; --headless runs without one";
    return window;
}

}  // namespace Host
