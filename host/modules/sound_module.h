// The sound, in a module of its own that is loaded at first use.
#pragma once

#include <memory>

#include "osp/media/sound/sound_backend.h"

namespace Host {

/// Null when the module is missing or cannot start. Any thread.
std::unique_ptr<Osp::Media::SoundBackend> LoadSoundBackend();

}  // namespace Host
