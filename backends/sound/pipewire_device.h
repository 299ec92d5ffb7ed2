// The loudspeaker, through PipeWire.
#pragma once

#include <memory>

#include "osp/media/sound/sound_backend.h"

namespace Osp::Media {

/// Null when no daemon runs.
std::unique_ptr<SoundDevice> OpenPipewireDevice(std::shared_ptr<SoundMixer> mixer);

}  // namespace Osp::Media
