// Whether a camera delivers a preview.
#pragma once

namespace Osp::Media {

/// Focusing and capturing are part of previewing, which goes on meanwhile.
enum class CameraState {
    kInitial = 0,     ///< powered off, or on without a preview
    kPreviewing = 1,  ///< between StartPreview and StopPreview, PowerOff or a device failure
};

}  // namespace Osp::Media
