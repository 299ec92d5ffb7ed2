// A decoded sound.
#pragma once

#include <cstddef>
#include <vector>

namespace Osp::Media {

constexpr int kSoundRate = 48000;  // frames a second
constexpr int kSoundChannels = 2;

/// Interleaved frames of two samples, -1 to 1.
struct SoundClip {
    std::vector<float> samples;

    std::size_t Frames() const { return samples.size() / kSoundChannels; }
};

/// Removes the silence before the sound, of which every MP3 encoder adds some; all of a clip that
/// is nothing else.
void TrimLeadingSilence(SoundClip& clip);

}  // namespace Osp::Media
