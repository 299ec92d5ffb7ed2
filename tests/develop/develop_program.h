// kivo-develop as a process of its own, and files to feed it with.
#pragma once

#include <string>
#include <vector>

#include "tests/support/pictures.h"
#include "tests/support/program.h"

namespace Kivo::Testing {

/// Runs it to its end.
ProgramResult RunDevelop(const std::vector<std::string>& arguments);

/// The text of a binary pixmap, and back; the test fails when it is not a whole one.
std::string ToPpm(const Picture& picture);
Picture FromPpm(const std::string& text);

}  // namespace Kivo::Testing
