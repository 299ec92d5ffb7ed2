// The whole camera, headless with the built-in scene, for benchmarks.
#pragma once

#include "host/options.h"
#include "host/script/script_queue.h"

namespace Bench {

/// Runs the application in a temporary folder until `queue`, which has been closed, is done.
/// Returns 0, or 1 after printing why it failed.
int RunCamera(Host::ClockKind clock, Host::ScriptQueue& queue);

}  // namespace Bench
