#include "osp/media/sound/sound_backend.h"

#include <gst/gst.h>
#include <pipewire/pipewire.h>

#include "backends/sound/clip_decoder.h"
#include "backends/sound/pipewire_device.h"

namespace Osp::Media {

namespace {

class LinuxSound : public SoundBackend {
  public:
    SoundClip Decode(const std::string& realPath) override { return DecodeClip(realPath); }
    std::unique_ptr<SoundDevice> Open(std::shared_ptr<SoundMixer> mixer) override {
        return OpenPipewireDevice(std::move(mixer));
    }
};

}  // namespace

}  // namespace Osp::Media

extern "C" Osp::Media::SoundBackend* OspMakeSoundBackend() {
    pw_init(nullptr, nullptr);
    return gst_init_check(nullptr, nullptr, nullptr) ? new Osp::Media::LinuxSound : nullptr;
}
