// Which photographs the album shows.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace Kivo {

/// The names of the photographs among the names of a folder, the oldest first. Names are made anew
/// from the numbers, so that KIVO12.jpg is not in the list, and neither is whatever else has a
/// photograph's number but not its name; the name in its place may well be that of no file.
std::vector<std::string> ListPhotographs(std::span<const std::string> folderNames);

}  // namespace Kivo
