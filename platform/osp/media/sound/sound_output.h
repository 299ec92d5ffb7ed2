// Where sound clips are played.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace Osp::Media {

/// Plays clips from files, any number at once. Loop thread only; callbacks arrive there, from the
/// loop. Nothing waits.
class SoundOutput {
  public:
    using VoiceId = std::uint64_t;  // 0 is no voice

    virtual ~SoundOutput() = default;

    /// Makes the clip at the real path ready to start within one audio period, and keeps the
    /// output awake until as many calls of Release.
    virtual void Prepare(const std::string& realPath) = 0;
    virtual void Release() = 0;

    /// Starts a prepared clip from its beginning. `ended` is called once when it has played to its
    /// end, and not for a voice that was stopped or forgotten.
    virtual VoiceId Start(const std::string& realPath, bool isLooping,
                          std::function<void()> ended) = 0;
    /// Silences the voice. Here and below, ids of ended voices and 0 are allowed.
    virtual void Stop(VoiceId voice) = 0;
    /// Lets the voice ring out without its callback; a looping voice ends with its current round.
    virtual void Forget(VoiceId voice) = 0;
};

}  // namespace Osp::Media
