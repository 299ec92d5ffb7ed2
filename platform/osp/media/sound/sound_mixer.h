// Several sounds as one.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

#include "osp/media/sound/sound_clip.h"
#include "osp/media/sound/sound_output.h"

namespace Osp::Media {

/// Voices are started and stopped by the loop thread and heard by the device's thread.
class SoundMixer {
  public:
    SoundMixer();

    /// From the next frame that is mixed on.
    void Start(SoundOutput::VoiceId id, std::shared_ptr<const SoundClip> clip, bool isLooping);
    /// Fades the voice out within a few milliseconds, so that it does not click. Ids of ended
    /// voices are allowed.
    void Stop(SoundOutput::VoiceId id);
    /// Lets a looping voice end with its current round.
    void StopLooping(SoundOutput::VoiceId id);

    /// Fills `samples`, whole frames, with the sum of all voices.
    void Mix(std::span<float> samples);

  private:
    struct Voice {
        SoundOutput::VoiceId id;
        std::shared_ptr<const SoundClip> clip;  // not empty
        bool isLooping;
        std::size_t next = 0;     // sample
        int fadeFramesLeft = -1;  // negative while it is not being stopped
    };

    /// False once the voice has ended.
    static bool Add(Voice& voice, std::span<float> samples);
    Voice* Find(SoundOutput::VoiceId id);

    // Held for microseconds on either side, so that the device is never kept waiting.
    std::mutex mutex_;
    std::vector<Voice> voices_;
};

}  // namespace Osp::Media
