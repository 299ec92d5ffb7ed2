// Hears what becomes of a sound.
#pragma once

#include <osp/base/result.h>

namespace Osp::Media {

/// All calls come from the loop, never from inside a call on the player.
class IPlayerEventListener {
  public:
    virtual ~IPlayerEventListener() = default;
    /// OpenFile has succeeded.
    virtual void OnPlayerOpened(result r) = 0;
    /// The clip has played to its end; the player has stopped.
    virtual void OnPlayerEndOfClip() = 0;
    /// From here on: never called by this device, where clips lie in memory and nothing interrupts.
    virtual void OnPlayerBuffering(int percent) = 0;
    virtual void OnPlayerErrorOccurred(result r) = 0;
    virtual void OnPlayerInterrupted() = 0;
    virtual void OnPlayerReleased() = 0;
};

}  // namespace Osp::Media
