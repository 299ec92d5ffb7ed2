#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/modules/sound_module.h"
#include "tests/support/programs/process.h"
#include "tests/support/programs/program.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Media {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Testing::Process;
using Testing::TemporaryFolder;
using Testing::Within;

/// This process's sound servers are those in its own folder.
class SoundBackendTest : public testing::Test {
  protected:
    SoundBackendTest() {
        setenv("XDG_RUNTIME_DIR", folder_.Path().c_str(), 1);
        setenv("PIPEWIRE_RUNTIME_DIR", folder_.Path().c_str(), 1);
        EXPECT_NE(backend_, nullptr) << "the module cannot be loaded";
    }
    std::unique_ptr<Process> StartServer() {
        auto server = std::make_unique<Process>(
            std::vector<std::string>{"pipewire", "-c", KIVO_SOUND_TESTS "/sound_server.conf"});
        EXPECT_TRUE(
            Within(10s, [this] { return std::filesystem::exists(folder_ / "pipewire-0"); }));
        return server;
    }

    TemporaryFolder folder_;
    std::unique_ptr<SoundBackend> backend_ = Host::LoadSoundBackend();
};

std::shared_ptr<const SoundClip> Constant(float left, float right, std::size_t frames) {
    auto clip = std::make_shared<SoundClip>();
    for (std::size_t i = 0; i < frames; ++i) {
        clip->samples.insert(clip->samples.end(), {left, right});
    }
    return clip;
}

/// The most frames in a row of exactly these samples in a WAV file of floats.
int LongestRun(const std::string& wav, float left, float right) {
    const std::size_t data = wav.find("data");
    if (data == std::string::npos) return -1;
    int longest = 0;
    int run = 0;
    for (std::size_t at = data + 8; at + 8 <= wav.size(); at += 8) {
        float frame[2];
        std::memcpy(frame, &wav[at], sizeof frame);
        run = frame[0] == left && frame[1] == right ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

float NextLevel(SoundMixer& mixer) {
    float frame[2];
    mixer.Mix(frame);
    return frame[0];
}

TEST_F(SoundBackendTest, PlaysWhatTheMixerMixesUntilTheServerGoes) {
    auto server = StartServer();
    const auto mixer = std::make_shared<SoundMixer>();
    const auto device = backend_->Open(mixer);
    ASSERT_NE(device, nullptr);
    const std::string recording = folder_ / "recording.wav";
    auto recorder = std::make_unique<Process>(std::vector<std::string>{
        "pw-record", "--target", "0", "-P", "{ node.name = test-recorder }", "--format", "f32",
        "--rate", "48000", "--channels", "2", recording});
    ASSERT_EQ(std::system("sh " KIVO_SOUND_TESTS "/connect_sound.sh"), 0);
    EXPECT_FALSE(device->IsLost());
    mixer->Start(1, Constant(0.25F, -0.5F, kSoundRate / 2), false);
    EXPECT_TRUE(Within(5s, [&] { return NextLevel(*mixer) == 0; })) << "it plays nothing";
    std::this_thread::sleep_for(200ms);  // what has been mixed is on its way
    recorder.reset();
    EXPECT_GE(LongestRun(Testing::ReadText(recording), 0.25F, -0.5F), kSoundRate / 10);

    device->SetActive(false);
    std::this_thread::sleep_for(200ms);
    mixer->Start(2, Constant(0.25F, 0.25F, kSoundRate / 10), false);
    std::this_thread::sleep_for(500ms);
    EXPECT_EQ(NextLevel(*mixer), 0.25F) << "it plays while it sleeps";
    device->SetActive(true);
    EXPECT_TRUE(Within(5s, [&] { return NextLevel(*mixer) == 0; })) << "it did not wake up";

    server.reset();
    EXPECT_TRUE(Within(5s, [&] { return device->IsLost(); }));
    device->SetActive(false);
}

TEST_F(SoundBackendTest, WithoutAServerThereIsNoDeviceAndNoWait) {
    const auto start = Clock::now();
    EXPECT_EQ(backend_->Open(std::make_shared<SoundMixer>()), nullptr);
    EXPECT_LT(Clock::now() - start, 1s);
}

/// A WAV file of 16-bit samples.
std::string Wav(unsigned rate, unsigned channels, const std::vector<std::int16_t>& samples) {
    const auto raw = [](const auto& values) {
        return std::string(reinterpret_cast<const char*>(std::data(values)),
                           std::size(values) * sizeof values[0]);
    };
    const auto size = static_cast<std::uint32_t>(2 * samples.size());
    const unsigned frame = 2 * channels;
    const std::uint32_t whole[] = {36 + size};
    const std::uint32_t format[] = {16, 1 | channels << 16, rate, rate * frame, frame | 16U << 16};
    const std::uint32_t data[] = {size};
    return "RIFF" + raw(whole) + "WAVEfmt " + raw(format) + "data" + raw(data) + raw(samples);
}

TEST_F(SoundBackendTest, DecodesClipsToItsOwnFormat) {
    std::vector<std::int16_t> samples;
    for (int i = 0; i < 2 * 4800; ++i) samples.push_back(static_cast<std::int16_t>(i * 3 + 2000));
    Testing::WriteText(folder_ / "exact.wav", Wav(48000, 2, samples));
    const SoundClip exact = backend_->Decode(folder_ / "exact.wav");
    ASSERT_EQ(exact.samples.size(), samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        ASSERT_NEAR(exact.samples[i], samples[i] / 32768.0, 1e-6) << i;
    }
    Testing::WriteText(folder_ / "other.wav",
                       Wav(22050, 1, std::vector<std::int16_t>(22050, 8192)));
    const SoundClip other = backend_->Decode(folder_ / "other.wav");
    EXPECT_NEAR(static_cast<double>(other.Frames()), 48000, 100);
    EXPECT_NEAR(other.samples[48000], 0.25, 0.01);
    EXPECT_EQ(other.samples[48000], other.samples[48001]);

    const std::string resources = Kivo::Testing::ProgramFolder() + "/../share/kivo-camera/Res/";
    for (const char* name : {"kivo.mp3", "dslr.mp3", "others.mp3", "snd_change_roll.wav"}) {
        const SoundClip clip = backend_->Decode(resources + name);
        ASSERT_GT(clip.Frames(), 1000u) << name;
        EXPECT_LT(clip.Frames(), 3u * kSoundRate) << name;
        const auto isHeard = [](float sample) { return std::abs(sample) > 0.001F; };
        EXPECT_TRUE(std::ranges::any_of(std::span(clip.samples).first(200), isHeard))
            << name << " begins with silence";
    }
}

TEST_F(SoundBackendTest, WhatIsNoSoundIsEmptyAndTakesNoTime) {
    Testing::WriteText(folder_ / "text.mp3", "this is no sound, whatever its name says");
    Testing::WriteText(folder_ / "empty.wav", "");
    Testing::WriteText(folder_ / "cut.wav", Wav(48000, 2, {1, 2, 3}).substr(0, 30));
    const auto start = Clock::now();
    for (const char* name : {"text.mp3", "empty.wav", "cut.wav", "missing.wav", "."}) {
        EXPECT_EQ(backend_->Decode(folder_ / name).Frames(), 0u) << name;
    }
    EXPECT_LT(Clock::now() - start, 5s);
}

TEST_F(SoundBackendTest, ALongSoundIsCut) {
    Testing::WriteText(folder_ / "long.wav",
                       Wav(8000, 1, std::vector<std::int16_t>(8000 * 40, 8192)));
    const std::size_t frames = backend_->Decode(folder_ / "long.wav").Frames();
    EXPECT_GE(frames, 30u * kSoundRate);
    EXPECT_LE(frames, 32u * kSoundRate);
}

}  // namespace
}  // namespace Osp::Media
