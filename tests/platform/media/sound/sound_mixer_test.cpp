#include "osp/media/sound/sound_mixer.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>

namespace Osp::Media {
namespace {

using Samples = std::vector<float>;

std::shared_ptr<const SoundClip> Clip(const Samples& samples) {
    return std::make_shared<SoundClip>(SoundClip{samples});
}

Samples Mixed(SoundMixer& mixer, std::size_t frames) {
    Samples samples(frames * kSoundChannels, 99.0F);
    mixer.Mix(samples);
    return samples;
}

TEST(SoundMixer, AddsItsVoicesAndIsSilentWithoutThem) {
    SoundMixer mixer;
    EXPECT_EQ(Mixed(mixer, 2), (Samples{0, 0, 0, 0}));
    const Samples one = {0.25F, -0.25F, 0.5F, -0.5F, 0.125F, 0.75F};
    mixer.Start(1, Clip(one), false);
    EXPECT_EQ(Mixed(mixer, 1), (Samples{0.25F, -0.25F}));
    mixer.Start(2, Clip(one), false);
    EXPECT_EQ(Mixed(mixer, 3), (Samples{0.75F, -0.75F, 0.625F, 0.25F, 0.125F, 0.75F}));
    EXPECT_EQ(Mixed(mixer, 2), (Samples{0, 0, 0, 0}));
    mixer.Start(3, Clip({0.75F, -0.75F}), false);
    mixer.Start(4, Clip({0.75F, -0.75F}), false);
    EXPECT_EQ(Mixed(mixer, 1), (Samples{1, -1})) << "clipped, not wrapped";
}

TEST(SoundMixer, AStoppedVoiceFadesWithinFiveMillisecondsAndDisturbsNoOther) {
    SoundMixer mixer;
    mixer.Start(1, Clip(Samples(9600, 0.5F)), true);
    mixer.Start(2, Clip(Samples(9600, 0.125F)), true);
    mixer.Stop(1);
    mixer.Stop(1);
    mixer.Stop(7);
    const Samples samples = Mixed(mixer, 480);
    EXPECT_EQ(samples[0], 0.625F);
    EXPECT_TRUE(std::ranges::is_sorted(samples, std::greater<>()));
    for (std::size_t i = 2; i < samples.size(); ++i) {
        ASSERT_LT(samples[i - 2] - samples[i], 0.005F) << "a click";
    }
    EXPECT_EQ(samples[2 * 240], 0.125F);
    EXPECT_EQ(samples.back(), 0.125F);
}

TEST(SoundMixer, IsUsedByTwoThreads) {
    SoundMixer mixer;
    std::atomic<bool> isDone = false;
    std::thread device([&] {
        while (!isDone) Mixed(mixer, 64);
    });
    for (SoundOutput::VoiceId id = 1; id < 5000; ++id) {
        mixer.Start(id, Clip(Samples(64, 0.01F)), id % 2 == 0);
        id % 3 == 0 ? mixer.Stop(id) : mixer.StopLooping(id);
    }
    isDone = true;
    device.join();
    Mixed(mixer, 10'000);
    EXPECT_EQ(Mixed(mixer, 1), (Samples{0, 0})) << "a voice is left";
}

TEST(TrimLeadingSilence, KeepsTheAttackAndAllThatFollows) {
    SoundClip clip;
    clip.samples.assign(2 * 1000, 0.001F);
    clip.samples[2 * 900 + 1] = -0.5F;
    const float last = clip.samples.back();
    TrimLeadingSilence(clip);
    EXPECT_EQ(clip.Frames(), 100u + 48);
    EXPECT_EQ(clip.samples[2 * 48 + 1], -0.5F);
    EXPECT_EQ(clip.samples.back(), last);
    const std::size_t trimmed = clip.Frames();
    TrimLeadingSilence(clip);
    EXPECT_EQ(clip.Frames(), trimmed);

    SoundClip silence{Samples(100, 0.0F)};
    TrimLeadingSilence(silence);
    EXPECT_EQ(silence.Frames(), 0u);
    TrimLeadingSilence(silence);
    EXPECT_EQ(silence.Frames(), 0u);
}

}  // namespace
}  // namespace Osp::Media
