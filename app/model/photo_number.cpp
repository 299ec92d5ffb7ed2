#include "app/model/photo_number.h"

#include <algorithm>
#include <charconv>

namespace Kivo {

namespace {

constexpr std::string_view kPrefix = "KIVO";
constexpr std::size_t kDigits = 4;

}  // namespace

std::optional<int> PhotoNumberOf(std::string_view fileName) {
    if (!fileName.starts_with(kPrefix) || fileName.size() < kPrefix.size() + kDigits) return {};
    const std::string_view digits = fileName.substr(kPrefix.size(), kDigits);
    int number = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number);
    if (error != std::errc{} || end != digits.end()) return {};
    return number;
}

int HighestPhotoNumber(std::span<const std::string> fileNames) {
    int highest = -1;
    for (const std::string& name : fileNames) {
        highest = std::max(highest, PhotoNumberOf(name).value_or(-1));
    }
    return highest;
}

std::string PhotoFileName(int number) {
    std::string digits = std::to_string(number);
    if (digits.size() < kDigits) digits.insert(0, kDigits - digits.size(), '0');
    return std::string(kPrefix) + digits + ".jpg";
}

}  // namespace Kivo
