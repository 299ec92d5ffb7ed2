// The command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "develop/recipe.h"

namespace Kivo::Tools {

enum class Mode { kPhotograph, kBatch, kSheet };

struct Options {
    Mode mode = Mode::kPhotograph;
    Recipe recipe;
    std::vector<std::string> inputs;  // files; of a batch the one folder
    std::string output;
};

/// What a command line means for the process.
struct Parsed {
    Options options;
    /// Set when there is nothing to do: after --version or an error, which has been printed.
    std::optional<int> exitCode;
};

/// Prints what --version asks for and what is wrong; --help ends the process. Sorts `argv`.
Parsed ParseCommandLine(int argc, char** argv);

}  // namespace Kivo::Tools
