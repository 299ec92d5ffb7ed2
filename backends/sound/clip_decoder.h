// Sound files to samples.
#pragma once

#include <string>

#include "osp/media/sound/sound_clip.h"

namespace Osp::Media {

/// The first half minute of the file at most; empty when it is no sound.
SoundClip DecodeClip(const std::string& realPath);

}  // namespace Osp::Media
