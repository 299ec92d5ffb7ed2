#include "album/photo_information.h"

namespace Kivo {

namespace {

constexpr std::size_t kNone = std::string::npos;

/// A comma at the very beginning parts nothing.
std::size_t FindComma(const std::string& description) {
    const std::size_t comma = description.find(',');
    return comma == 0 ? kNone : comma;
}

}  // namespace

bool TellsOfHdr(const std::string& description) {
    const std::size_t place = description.find("HDR");
    return FindComma(description) != kNone && place != kNone && place > 1;
}

std::string TitleOf(const std::string& description) {
    return description.substr(0, FindComma(description));
}

std::string SizeTextOf(const std::string& description, const Osp::Graphics::Dimension& size) {
    // ",HDR" and, deliberately, the character before it: HDR photographs read "2 1600 x 960".
    constexpr std::size_t kHdrEnd = 5;
    const std::size_t comma = FindComma(description);
    std::string zoom = comma == kNone ? "" : description.substr(comma + 1);
    if (TellsOfHdr(description)) zoom.resize(zoom.size() < kHdrEnd ? 0 : zoom.size() - kHdrEnd);
    if (!zoom.empty()) zoom += ' ';
    return zoom + std::to_string(size.width) + " x " + std::to_string(size.height);
}

}  // namespace Kivo
