// What the camera can deliver, in the words of the command line and in those of the stream.
#pragma once

#include <optional>
#include <string>
#include <vector>

struct spa_pod;
struct spa_pod_builder;

namespace Osp::Testing {

enum class PixelFormat { kI420, kNv12, kYuy2, kMjpg, kRgb };

struct Mode {
    PixelFormat format;
    int width;
    int height;
    int rate;  // frames a second
};

/// "WxH": even and not smaller than the pattern allows, else nothing.
struct FrameSize {
    int width;
    int height;
};
std::optional<FrameSize> ParseSize(const std::string& text);

/// "FORMAT:WxH@RATE"; nothing when it is no such thing.
std::optional<Mode> ParseMode(const std::string& text);
/// "FORMAT WxH@RATE".
std::string Describe(const Mode& mode);

/// One offer for each format and size with all its rates, in the order of their first appearance.
/// They live in the builder's memory.
std::vector<const spa_pod*> BuildOffers(const std::vector<Mode>& modes, spa_pod_builder& builder);
/// What was agreed on.
std::optional<Mode> ReadFormat(const spa_pod* format);

}  // namespace Osp::Testing
