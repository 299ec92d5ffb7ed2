// Why the program does not start.
#pragma once

#include <string>

namespace Host {

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;  // the command line is wrong
constexpr int kExitInUse = 3;  // another instance uses the data folder

struct StartFailure {
    std::string message;
    int exitCode = kExitFailure;
};

}  // namespace Host
