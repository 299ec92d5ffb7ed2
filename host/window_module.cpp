#include "host/window_module.h"

#include "host/application_library.h"

namespace Host {

std::unique_ptr<Window> OpenWindow(bool isFullscreen, std::string& error) {
    void* const maker =
        LoadSymbol(PackageFolder() + "/lib/libkivo-window.so", kMakeWindowSymbol, error);
    if (maker == nullptr) return nullptr;
    std::unique_ptr<Window> window(reinterpret_cast<MakeWindowFunction>(maker)(isFullscreen));
    if (!window) error = "there is no display to open a window on; --headless runs without one";
    return window;
}

}  // namespace Host
