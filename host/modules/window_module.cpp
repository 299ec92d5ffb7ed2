#include "host/modules/window_module.h"

#include "host/modules/application_library.h"

namespace Host {

using Osp::Ui::Window;

Outcome<std::unique_ptr<Window>> OpenWindow(bool isFullscreen) {
    Outcome<void*> maker =
        LoadSymbol(PackageFolder() + "/lib/libkivo-window.so", Osp::Ui::kMakeWindowSymbol);
    if (!maker) return maker.Why();
    const auto makeWindow = reinterpret_cast<Osp::Ui::MakeWindowFunction>(*maker);
    std::unique_ptr<Window> window(makeWindow(isFullscreen));
    if (window) return window;
    return Failure{"there is no display to open a window on; --headless runs without one"};
}

}  // namespace Host
