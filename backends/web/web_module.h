// What the web engine's module offers.
#pragma once

#include <string>

#include "backends/window/window.h"
#include "osp/web/web_engine.h"

namespace Osp::Web {

struct EngineOptions {
    /// A file of PEM certificates that are trusted beside the system's; empty for none.
    std::string authorityFile;
};

/// What the module exports: a new engine, the caller's, whose views lie in `window`, which outlives
/// it.
using MakeWebEngineFunction = WebEngine* (*)(Ui::Window& window, const EngineOptions& options);
inline constexpr const char* kMakeWebEngineSymbol = "KivoMakeWebEngine";

}  // namespace Osp::Web
