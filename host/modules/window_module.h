// The window, in a module of its own that is loaded at first use.
#pragma once

#include <memory>

#include "backends/window/window.h"
#include "host/outcome.h"

namespace Host {

/// Fails when there is no display or the module is missing. The toolkit takes tens of milliseconds
/// to load, which headless runs do not pay.
Outcome<std::unique_ptr<Osp::Ui::Window>> OpenWindow(bool isFullscreen);

}  // namespace Host
