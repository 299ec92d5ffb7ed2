// The script language: from a line to what is to be done.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "host/script/script_step.h"

namespace Host {

class CameraModules;
class ShowRecorder;

/// A longer line is no command.
inline constexpr std::size_t kLongestLineBytes = 65536;

struct CommandContext {
    ShowRecorder& recorder;
    CameraModules& modules;
};

/// The steps of one line; none for a blank line or a comment. A line that is no command gives a
/// step that fails and says why.
Steps ParseCommand(const std::string& line, const CommandContext& context);

}  // namespace Host
