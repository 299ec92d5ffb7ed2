// The whole camera, headless, for benchmarks.
#pragma once

#include <string>

#include "host/options.h"
#include "host/script/script_queue.h"

namespace Bench {

/// Runs the application with that back camera alone, in a temporary folder, until `queue`, which
/// has been closed, is done. Returns 0, or 1 after printing why it failed.
int RunCamera(Host::ClockKind clock, Host::ScriptQueue& queue, const std::string& source = "scene");

}  // namespace Bench
