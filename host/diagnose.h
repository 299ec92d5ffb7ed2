// What the program found on this machine, for a person to read.
#pragma once

#include <string>

namespace Host {

/// Print to standard output and return the exit code.
int ListCameras();
int Diagnose(const std::string& packageFolder);

}  // namespace Host
