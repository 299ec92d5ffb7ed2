#include "osp/media/live/video_modes.h"

#include <algorithm>
#include <tuple>

namespace Osp::Media {

namespace {

// A device that does not tell its rate is taken to be quick: most are.
int RateOf(const VideoMode& mode) {
    return mode.framesASecond == 0 ? kMostFramesASecond
                                   : std::min(mode.framesASecond, kMostFramesASecond);
}

long long Pixels(const Graphics::Dimension& size) {
    return static_cast<long long>(size.width) * size.height;
}

auto MeritOf(const VideoMode& mode, const Graphics::Dimension& upright) {
    const bool isLarge = mode.size.width >= upright.width && mode.size.height >= upright.height;
    const long long pixels = Pixels(mode.size);
    return std::tuple(RateOf(mode) >= kFewestFramesASecond, isLarge, isLarge ? -pixels : pixels,
                      RateOf(mode), mode.format != VideoFormat::kMjpeg);
}

}  // namespace

std::optional<VideoMode> ChooseMode(std::span<const VideoMode> modes,
                                    const Graphics::Dimension& upright) {
    const auto best = std::ranges::max_element(
        modes, {}, [&upright](const VideoMode& mode) { return MeritOf(mode, upright); });
    if (best == modes.end()) return std::nullopt;
    return *best;
}

}  // namespace Osp::Media
