#include "host/modules/sound_module.h"

#include "host/modules/application_library.h"

namespace Host {

// Why there is no sound interests nobody: a camera without a loudspeaker is none the worse.
std::unique_ptr<Osp::Media::SoundBackend> LoadSoundBackend() {
    Outcome<void*> maker =
        LoadSymbol(PackageFolder() + "/lib/libkivo-sound.so", Osp::Media::kMakeSoundBackendSymbol);
    if (!maker) return nullptr;
    return std::unique_ptr<Osp::Media::SoundBackend>(
        reinterpret_cast<Osp::Media::MakeSoundBackendFunction>(*maker)());
}

}  // namespace Host
