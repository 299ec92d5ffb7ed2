// What GStreamer's devices tell of themselves.
#pragma once

#include <gst/gst.h>
#include <optional>

#include "backends/gstreamer/camera_catalogue.h"

namespace Osp::Media {

/// Nothing for what is no camera or has no pictures that anybody here reads.
std::optional<CataloguedCamera> Describe(GstDevice& device);

}  // namespace Osp::Media
