// Which of a camera's modes serves the application best.
#pragma once

#include <optional>
#include <span>

#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// The preview never gets fewer where the device can do better.
constexpr int kFewestFramesASecond = 15;
/// More are not asked for.
constexpr int kMostFramesASecond = 30;

/// The size that pictures need so that their middle fills `upright` without being enlarged.
/// In order of weight: pictures often enough, large enough, no larger than they need be, the rate,
/// and unpacked rather than MJPEG. Nothing for a camera without modes.
std::optional<VideoMode> ChooseMode(std::span<const VideoMode> modes,
                                    const Graphics::Dimension& upright);

}  // namespace Osp::Media
