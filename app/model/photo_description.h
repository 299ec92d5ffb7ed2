// The line that tells how a photograph was taken.
#pragma once

#include <string>

#include "app/model/camera_types.h"

namespace Kivo {

/// For example "DSLR (Sepia),1.5X" or "KIVO (Normal),1X,HDR".
std::string ComposePhotoDescription(CameraType type, PhotoEffect effect, ZoomLevel zoom, bool hdr);

}  // namespace Kivo
