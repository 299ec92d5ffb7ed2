// Finding the application and its files beside the program.
#pragma once

#include <string>

#include "host/machine.h"
#include "host/outcome.h"

namespace Host {

/// Where the package lies, from the place of the running program: ../share/kivo-camera/Res and
/// ../lib. Empty when the program's own place cannot be told.
std::string PackageFolder();

/// What the shared library at `path` exports as `symbol`. Never unloaded: toolkits do not support
/// that, and the application would have to outlive all that it has registered. Any thread.
Outcome<void*> LoadSymbol(const std::string& path, const char* symbol);

Outcome<EntryFunction> LoadApplication(const std::string& packageFolder);

}  // namespace Host
