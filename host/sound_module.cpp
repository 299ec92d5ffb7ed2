#include "host/sound_module.h"

#include "host/application_library.h"

namespace Host {

std::unique_ptr<Osp::Media::SoundBackend> LoadSoundBackend() {
    std::string error;
    void* const maker = LoadSymbol(PackageFolder() + "/lib/libkivo-sound.so",
                                   Osp::Media::kMakeSoundBackendSymbol, error);
    if (maker == nullptr) return nullptr;
    return std::unique_ptr<Osp::Media::SoundBackend>(
        reinterpret_cast<Osp::Media::MakeSoundBackendFunction>(maker)());
}

}  // namespace Host
