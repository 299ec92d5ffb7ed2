// Plays a sound clip.
#pragma once

#include <memory>

#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/media/i_player_event_listener.h>
#include <osp/media/player_state.h>

namespace Osp::Media {

class PlayerVoice;

/// A clip that has started rings out even when its player is deleted. Without a sound device
/// everything succeeds in silence, with the same callbacks. Loop thread only.
class Player {
  public:
    Player();
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    /// `listener` is not owned and outlives the player. kInvalidState when constructed already.
    result Construct(IPlayerEventListener& listener);

    /// Makes ready the clip in a file, WAV or MP3; `path` is virtual. kFileNotFound when it is not
    /// there, kInvalidState before Construct or when a clip is open. A file that turns out not to
    /// be a sound plays as silence.
    result OpenFile(const Base::String& path);
    /// For the next Play. kInvalidState before Construct.
    result SetLooping(bool looping);

    /// Starts from the beginning; kInvalidState without a clip or while playing.
    result Play();
    /// From kPlaying to kStopped, without a further callback; kInvalidState otherwise.
    result Stop();
    PlayerState GetState() const;

  private:
    std::unique_ptr<PlayerVoice> voice_;  // null before Construct
};

}  // namespace Osp::Media
