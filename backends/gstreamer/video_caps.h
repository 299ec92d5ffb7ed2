// Between what GStreamer says about formats and the camera's modes.
#pragma once

#include <gst/gst.h>
#include <optional>
#include <vector>

#include "backends/gstreamer/gst_owner.h"
#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// What the caps of a device offer, each mode once with its highest rate; formats and kinds of
/// memory that nobody here reads are left out.
std::vector<VideoMode> ModesOf(const GstCaps& caps);

/// Fixed caps of exactly this picture, at the rate of the device's that is next to what a preview
/// wants. Null when the device does not offer the picture.
CapsOwner CapsFor(const VideoMode& mode, GstCaps& deviceCaps);

}  // namespace Osp::Media
