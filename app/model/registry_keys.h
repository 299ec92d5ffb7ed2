// What the application keeps between runs, and how it is written.
#pragma once

#include <osp/app/app_registry.h>
#include <osp/app/application.h>
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
/// Who is signed in, as text.
inline constexpr const char* kTwitterTokenKey = "TW_TOKEN";
inline constexpr const char* kTwitterSecretKey = "TW_TOKEN_SECRET";
inline constexpr const char* kFacebookTokenKey = "FB_TOKEN";

/// The running application's.
inline Osp::App::AppRegistry& Registry() {
    return *Osp::App::Application::GetInstance()->GetAppRegistry();
}

/// Whatever it holds.
inline bool HasKey(const Osp::Base::String& key) {
    int ignored = 0;
    return Registry().Get(key, ignored) != result::kKeyNotFound;
}

/// `value` is an int or a String. Only a key that is new is saved at once; the platform saves the
/// others at the end, which is deliberate: it spares the flash memory.
template <class Value>
void Keep(const Osp::Base::String& key, const Value& value) {
    if (Registry().Set(key, value) != result::kKeyNotFound) return;
    (void)Registry().Add(key, value);
    (void)Registry().Save();
}

}  // namespace Kivo
