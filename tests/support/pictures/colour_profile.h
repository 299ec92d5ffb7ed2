// Colour profiles that are well formed and say nothing.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Kivo::Testing {

/// Of `length` bytes, at least 132 unless it is 0, for a display with colours of `kind`.
inline std::vector<std::uint8_t> MakeProfile(std::string_view kind, std::size_t length) {
    std::vector<std::uint8_t> profile(length);
    if (length == 0) return profile;
    for (std::size_t i = 132; i < length; ++i) profile[i] = static_cast<std::uint8_t>(i * i / 7);
    for (std::size_t i = 0; i < 4; ++i) {
        profile[i] = static_cast<std::uint8_t>(length >> (24 - 8 * i));
    }
    profile[8] = 2;  // version
    const auto put = [&profile](std::size_t at, std::string_view text) {
        std::ranges::copy(text, profile.begin() + static_cast<std::ptrdiff_t>(at));
    };
    put(12, "mntr");
    put(16, kind);
    put(20, "XYZ ");
    put(36, "acsp");
    // The light of day that all of them are meant for.
    put(68, {"\0\0\xF6\xD6\0\1\0\0\0\0\xD3\x2D", 12});
    return profile;
}

}  // namespace Kivo::Testing
