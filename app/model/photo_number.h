// Numbering of stored photographs: KIVO0000.jpg, KIVO0001.jpg, ...
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Kivo {

/// The number in a file name: "KIVO" and four characters that read as an integer. Only four are
/// looked at, so KIVO12345.jpg has number 1234. Empty for every other name.
std::optional<int> PhotoNumberOf(std::string_view fileName);

/// The highest number among the names of a folder; -1 when there is none. The next photograph takes
/// the number after it, so gaps are not filled.
int HighestPhotoNumber(std::span<const std::string> fileNames);

/// "KIVO", the number with at least four digits, ".jpg".
std::string PhotoFileName(int number);

}  // namespace Kivo
