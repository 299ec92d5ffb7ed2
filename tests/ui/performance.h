// A phone that plays a script and is watched all the while.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace Kivo::Testing {

inline constexpr int kCameraTypes = 6;

/// What came of a script.
struct Outcome {
    std::string complaint;             // the first; empty when all is well
    std::vector<std::string> lines;    // what was done, as a script
    std::vector<std::size_t> screens;  // after each line
    std::map<std::string, std::size_t> files;
};

/// Plays `script` on a fresh phone, puts the phone in order afterwards and takes a photograph.
Outcome Perform(int cameraType, const std::vector<std::string>& script);

}  // namespace Kivo::Testing
