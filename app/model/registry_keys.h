// What the application keeps between runs, and how it is written.
#pragma once

#include <osp/app/app_registry.h>
#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Kivo {

/// The decimal camera type, as text.
inline constexpr const char* kCameraTypeKey = "CAM_TYPE";
inline constexpr const char* kCaptureWidthKey = "CAPTURE_WIDTH";
inline constexpr const char* kCaptureHeightKey = "CAPTURE_HEIGHT";
/// Flags: the presence of the key is the setting, whatever its value.
inline constexpr const char* kEffectSoundOffKey = "EFFECT_SOUND";
inline constexpr const char* kShutterSoundOffKey = "SHUTTER_SOUND";
inline constexpr const char* kExternalMemoryKey = "EXT_MEMORY";

}  // namespace Kivo
