#include "osp/media/sound/sound_mixer.h"

#include <algorithm>
#include <cmath>

namespace Osp::Media {

namespace {

constexpr int kFadeFrames = kSoundRate / 200;
constexpr std::size_t kUsualVoices = 16;
constexpr float kSilence = 1.0F / 512;
constexpr std::size_t kAttackFrames = kSoundRate / 1000;

}  // namespace

void TrimLeadingSilence(SoundClip& clip) {
    const auto loud = std::ranges::find_if(
        clip.samples, [](float sample) { return std::abs(sample) > kSilence; });
    const auto frame = static_cast<std::size_t>(loud - clip.samples.begin()) / kSoundChannels;
    // The first moment of a sound is softer than what counts as silence.
    const std::size_t silent = loud == clip.samples.end() ? frame
                               : frame > kAttackFrames    ? frame - kAttackFrames
                                                          : 0;
    clip.samples.erase(clip.samples.begin(),
                       clip.samples.begin() + static_cast<std::ptrdiff_t>(silent * kSoundChannels));
}

SoundMixer::SoundMixer() {
    voices_.reserve(kUsualVoices);
}

void SoundMixer::Start(SoundOutput::VoiceId id, std::shared_ptr<const SoundClip> clip,
                       bool isLooping) {
    const std::lock_guard lock(mutex_);
    voices_.push_back({id, std::move(clip), isLooping});
}

void SoundMixer::Stop(SoundOutput::VoiceId id) {
    const std::lock_guard lock(mutex_);
    Voice* const voice = Find(id);
    if (voice != nullptr && voice->fadeFramesLeft < 0) voice->fadeFramesLeft = kFadeFrames;
}

void SoundMixer::StopLooping(SoundOutput::VoiceId id) {
    const std::lock_guard lock(mutex_);
    if (Voice* const voice = Find(id)) voice->isLooping = false;
}

void SoundMixer::Mix(std::span<float> samples) {
    std::ranges::fill(samples, 0.0F);
    {
        const std::lock_guard lock(mutex_);
        std::erase_if(voices_, [&](Voice& voice) { return !Add(voice, samples); });
    }
    for (float& sample : samples) sample = std::clamp(sample, -1.0F, 1.0F);
}

bool SoundMixer::Add(Voice& voice, std::span<float> samples) {
    const std::vector<float>& clip = voice.clip->samples;
    for (std::size_t i = 0; i < samples.size(); i += kSoundChannels) {
        if (voice.fadeFramesLeft == 0) return false;
        const float gain = voice.fadeFramesLeft < 0
                               ? 1.0F
                               : static_cast<float>(voice.fadeFramesLeft--) / kFadeFrames;
        samples[i] += clip[voice.next] * gain;
        samples[i + 1] += clip[voice.next + 1] * gain;
        voice.next += kSoundChannels;
        if (voice.next < clip.size()) continue;
        if (!voice.isLooping) return false;
        voice.next = 0;
    }
    return true;
}

SoundMixer::Voice* SoundMixer::Find(SoundOutput::VoiceId id) {
    const auto found = std::ranges::find(voices_, id, &Voice::id);
    return found == voices_.end() ? nullptr : &*found;
}

}  // namespace Osp::Media
