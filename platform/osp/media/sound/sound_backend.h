// What stands between decoded sounds and the loudspeaker.
#pragma once

#include <memory>
#include <string>

#include "osp/media/sound/sound_clip.h"
#include "osp/media/sound/sound_mixer.h"

namespace Osp::Media {

/// Plays what a mixer mixes, from construction to destruction. One thread at a time.
class SoundDevice {
  public:
    virtual ~SoundDevice() = default;
    /// An inactive device lets the hardware sleep.
    virtual void SetActive(bool isActive) = 0;
    /// Whether it has gone for good, as when its daemon has ended.
    virtual bool IsLost() const = 0;
};

/// May take its time: called by workers only, one at a time.
class SoundBackend {
  public:
    virtual ~SoundBackend() = default;
    /// At kSoundRate and kSoundChannels, half a minute at most; empty when the file is no sound.
    virtual SoundClip Decode(const std::string& realPath) = 0;
    /// Active; null when there is nothing to play on.
    virtual std::unique_ptr<SoundDevice> Open(std::shared_ptr<SoundMixer> mixer) = 0;
};

/// What the module exports: a new backend, the caller's.
using MakeSoundBackendFunction = SoundBackend* (*)();
inline constexpr const char* kMakeSoundBackendSymbol = "OspMakeSoundBackend";

}  // namespace Osp::Media
