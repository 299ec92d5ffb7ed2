// What can go wrong, for the user.
#pragma once

#include <string>

namespace Kivo::Tools {

/// One line without a full stop; empty when nothing is wrong.
using Problem = std::string;

}  // namespace Kivo::Tools
