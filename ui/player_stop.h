// Stopping a sound.
#pragma once

#include <osp/media/player.h>

namespace Kivo {

/// So that it can be played from its beginning.
inline void StopIfActive(Osp::Media::Player& player) {
    // A paused player (state 6) would be stopped as well, but nothing pauses one.
    if (player.GetState() == Osp::Media::PlayerState::kPlaying) (void)player.Stop();
}

}  // namespace Kivo
