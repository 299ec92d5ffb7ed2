// What a photograph's file says about the photograph.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <osp/graphics/dimension.h>

#include "osp/base/clock.h"

namespace Osp::Media {

/// Texts are UTF-8; what a file does not say is empty or 0.
struct ExifInfo {
    std::string description;
    std::string dateTimeOriginal;    // "2026:01:31 12:00:00", local time
    std::string offsetTimeOriginal;  // of that time from UTC, "+01:00"
    std::string software;
    int orientation = 0;  // 1 is upright
    Graphics::Dimension size;

    friend bool operator==(const ExifInfo&, const ExifInfo&) = default;
};

/// Of a photograph that is taken now, upright and of `size`, without the software. The time is
/// local under a real clock and UTC under a virtual one. Any thread.
ExifInfo DescribePhotograph(const std::string& description, const Graphics::Dimension& size,
                            const Base::Clock& clock);

/// A whole APP1 segment, marker included. A description that would make it longer than a segment
/// can be is cut between characters. Any thread.
std::vector<std::uint8_t> BuildExifSegment(const ExifInfo& info);

/// Of a photograph made from the one in the file `original`: all that its EXIF says, dates and
/// places among it, with what `info` says in its stead. Leaves out what tells about its pixels (the
/// thumbnail) or cannot be moved (makers' notes). Where that is more than a segment can hold,
/// `info` and the original's date. Any thread.
std::vector<std::uint8_t> RebuildExifSegment(std::span<const std::uint8_t> original,
                                             const ExifInfo& info);

/// What the JPEG file says; nothing when it cannot be read or carries no EXIF. Any thread.
std::optional<ExifInfo> ReadExif(const std::string& realPath);
/// The same with the file's bytes.
std::optional<ExifInfo> ReadExif(std::span<const std::uint8_t> file);

}  // namespace Osp::Media
