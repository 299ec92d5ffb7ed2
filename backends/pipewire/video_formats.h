// Between what PipeWire says about formats and the camera's modes.
#pragma once

#include <optional>
#include <spa/pod/builder.h>
#include <spa/pod/pod.h>
#include <vector>

#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// Adds what one EnumFormat parameter of a node offers; formats that nobody here reads are left
/// out.
void AppendModes(const spa_pod& parameter, std::vector<VideoMode>& modes);

/// A format that asks for exactly this picture, as often as a preview wants it.
const spa_pod* BuildFormat(spa_pod_builder& builder, const VideoMode& mode);

/// What was agreed upon; nothing for a format that nobody here reads.
std::optional<VideoMode> ReadFormat(const spa_pod& format);

}  // namespace Osp::Media
