#include "osp/media/sound/mixed_sound.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "tests/support/test_loop.h"

namespace Osp::Media {
namespace {

using namespace std::chrono_literals;

/// What the test and its backend, on a worker, know of each other.
struct Studio {
    std::atomic<int> loads = 0;
    std::atomic<int> opens = 0;
    std::atomic<int> decodes = 0;
    std::atomic<bool> isActive = false;
    std::atomic<bool> isLost = false;
    std::atomic<bool> hasDevice = true;
    std::atomic<bool> isHeld = false;   // decoding waits
    std::shared_ptr<SoundMixer> mixer;  // of the device that was opened last
};

struct StudioDevice : SoundDevice {
    explicit StudioDevice(Studio& ownStudio) : studio(ownStudio) {
        studio.isActive = true;
        studio.isLost = false;
    }
    ~StudioDevice() override { studio.isActive = false; }
    void SetActive(bool isActive) override { studio.isActive = isActive; }
    bool IsLost() const override { return studio.isLost; }

    Studio& studio;
};

struct StudioBackend : SoundBackend {
    explicit StudioBackend(Studio& ownStudio) : studio(ownStudio) {}
    /// A tenth of a second of a level that the name tells; nothing for "bad".
    SoundClip Decode(const std::string& realPath) override {
        ++studio.decodes;
        studio.isHeld.wait(true);
        if (realPath == "bad") return {};
        return {
            std::vector<float>(kSoundRate / 10 * kSoundChannels, realPath == "a" ? 0.25F : 0.5F)};
    }
    std::unique_ptr<SoundDevice> Open(std::shared_ptr<SoundMixer> mixer) override {
        ++studio.opens;
        if (!studio.hasDevice) return nullptr;
        studio.mixer = std::move(mixer);
        return std::make_unique<StudioDevice>(studio);
    }

    Studio& studio;
};

class MixedSoundTest : public testing::Test {
  protected:
    MixedSoundTest() { Renew(true); }
    void Renew(bool hasBackend) {
        sound_ =
            std::make_unique<MixedSound>([this, hasBackend]() -> std::unique_ptr<SoundBackend> {
                ++studio_.loads;
                if (!hasBackend) return nullptr;
                return std::make_unique<StudioBackend>(studio_);
            });
    }
    SoundOutput::VoiceId Start(const std::string& path, bool isLooping = false) {
        return sound_->Start(path, isLooping, [this] { endsUs_.push_back(Now()); });
    }
    long long Now() { return test_.Clock().Now().count(); }
    /// The level of the next frame that the device plays.
    float Level() {
        float frame[2] = {99, 99};
        if (studio_.mixer) studio_.mixer->Mix(frame);
        return frame[0];
    }
    /// The level of the next `count` frames.
    void ExpectLevel(float level, int count) {
        for (int i = 0; i < count; ++i) ASSERT_EQ(Level(), level) << i;
    }
    void Warm(const std::string& path) {
        sound_->Prepare(path);
        test_.Pass(1s);
        ASSERT_TRUE(studio_.isActive);
    }

    Testing::TestLoop test_;
    Studio studio_;
    std::unique_ptr<MixedSound> sound_;
    std::vector<long long> endsUs_;
};

TEST_F(MixedSoundTest, CostsNothingWhileTheProgramStarts) {
    for (const char* path : {"a", "b", "a"}) sound_->Prepare(path);
    test_.Pass(999ms);
    EXPECT_EQ(studio_.loads, 0);
    test_.Pass(1ms);
    EXPECT_EQ(studio_.loads, 1);
    EXPECT_EQ(studio_.opens, 1);
    EXPECT_EQ(studio_.decodes, 2);
    sound_->Prepare("a");
    sound_->Prepare("c");
    test_.Settle();
    EXPECT_EQ(studio_.decodes, 3) << "each clip once";
}

TEST_F(MixedSoundTest, AReadyClipStartsAtOnceAndEndsAfterItsLength) {
    Warm("a");
    const long long start = Now();
    Start("a");
    EXPECT_EQ(Level(), 0.25F);
    Start("a");
    EXPECT_EQ(Level(), 0.5F) << "two voices";
    test_.Pass(99ms);
    EXPECT_TRUE(endsUs_.empty());
    test_.Pass(1ms);
    EXPECT_EQ(endsUs_, (std::vector<long long>{start + 100'000, start + 100'000}));
}

TEST_F(MixedSoundTest, StoppedVoicesFallSilentAndForgottenOnesRingOut) {
    Warm("a");
    const auto stopped = Start("a");
    Level();
    sound_->Stop(stopped);
    sound_->Stop(stopped);
    sound_->Stop(0);
    for (int i = 0; i < 240; ++i) Level();
    EXPECT_EQ(Level(), 0.0F);

    sound_->Forget(Start("a"));
    sound_->Forget(0);
    sound_->Release();
    ExpectLevel(0.25F, kSoundRate / 10);
    EXPECT_EQ(Level(), 0.0F);

    const auto looping = Start("a", true);
    ExpectLevel(0.25F, kSoundRate + 1);
    sound_->Forget(looping);
    ExpectLevel(0.25F, kSoundRate / 10 - 1);
    EXPECT_EQ(Level(), 0.0F);
    test_.Pass(1s);
    EXPECT_TRUE(endsUs_.empty());
}

TEST_F(MixedSoundTest, AClipThatIsNotReadyStartsAsSoonAsItIsUnlessThatIsTooLate) {
    sound_->Prepare("b");
    sound_->Prepare("a");
    sound_->Forget(Start("a"));
    test_.Settle();
    EXPECT_EQ(studio_.decodes, 2);
    EXPECT_EQ(Level(), 0.25F) << "forgotten, but it had started";

    studio_.isHeld = true;
    sound_->Prepare("late");
    Start("late");
    test_.Clock().AdvanceTo(test_.Clock().Now() + 301ms);
    studio_.isHeld = false;
    studio_.isHeld.notify_all();
    test_.Settle();
    for (int i = 1; i < kSoundRate / 10; ++i) Level();
    EXPECT_EQ(Level(), 0.0F);
    test_.Pass(100ms);
    EXPECT_EQ(endsUs_.size(), 1u) << "its end is heard all the same";
}

TEST_F(MixedSoundTest, WithoutSoundEverythingGoesOnInSilence) {
    Warm("bad");
    Start("bad");
    EXPECT_TRUE(endsUs_.empty()) << "called from inside the call";
    test_.Settle();
    EXPECT_EQ(endsUs_.size(), 1u);
    EXPECT_EQ(Level(), 0.0F);
    studio_.hasDevice = false;
    for (const bool hasBackend : {false, true}) {
        Renew(hasBackend);
        sound_->Prepare("a");
        Start("a");
        test_.Pass(100ms);
        EXPECT_EQ(endsUs_.size(), hasBackend ? 3u : 2u);
    }
}

TEST_F(MixedSoundTest, ALostDeviceIsOpenedAgainButNotAllTheTime) {
    Warm("a");
    studio_.isLost = true;
    studio_.hasDevice = false;
    for (int i = 0; i < 5; ++i) sound_->Prepare("a");
    test_.Settle();
    EXPECT_EQ(studio_.opens, 1) << "opened a moment ago";
    test_.Pass(10s);
    for (int i = 0; i < 5; ++i) sound_->Prepare("a");
    test_.Settle();
    EXPECT_EQ(studio_.opens, 2);
    studio_.hasDevice = true;
    test_.Pass(9s);
    sound_->Prepare("a");
    test_.Pass(1s);
    sound_->Prepare("a");
    test_.Settle();
    EXPECT_EQ(studio_.opens, 3);
    Start("a");
    EXPECT_EQ(Level(), 0.25F);
}

TEST_F(MixedSoundTest, TheDeviceSleepsFiveSecondsAfterItsLastUser) {
    Warm("a");
    sound_->Prepare("b");
    test_.Settle();
    sound_->Release();
    test_.Pass(60s);
    EXPECT_TRUE(studio_.isActive);
    sound_->Release();
    test_.Pass(4999ms);
    sound_->Prepare("a");
    sound_->Release();
    test_.Pass(4999ms);
    EXPECT_TRUE(studio_.isActive) << "between two photographs";
    test_.Pass(1ms);
    EXPECT_FALSE(studio_.isActive);
    sound_->Prepare("a");
    EXPECT_TRUE(studio_.isActive);
}

TEST_F(MixedSoundTest, MayGoWhileAWorkerWorksForIt) {
    for (int i = 0; i < 50; ++i) {
        Renew(true);
        sound_->Prepare("a");
        Start("a");
        if (i % 2 == 0) test_.Settle();
        sound_.reset();
        test_.Settle();
        EXPECT_FALSE(studio_.isActive);
    }
    EXPECT_EQ(endsUs_.size(), 0u);
}

}  // namespace
}  // namespace Osp::Media
