#include <gtest/gtest.h>
#include <map>
#include <memory>

#include <osp/media/player.h>

#include "osp/io/storage_map.h"
#include "osp/media/sound/sound_service.h"
#include "tests/support/product.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_loop.h"

namespace Osp::Media {
namespace {

using Strings = std::vector<std::string>;

/// Notes what it is told to do; its clips end when the test says so.
class NotingOutput : public SoundOutput {
  public:
    void Prepare(const std::string& realPath) override { Note("prepare", realPath); }
    void Release() override { notes.push_back("release"); }
    VoiceId Start(const std::string& realPath, bool isLooping,
                  std::function<void()> ended) override {
        Note(isLooping ? "loop" : "start", realPath);
        ends[++last] = std::move(ended);
        return last;
    }
    void Stop(VoiceId voice) override { notes.push_back("stop " + std::to_string(voice)); }
    void Forget(VoiceId voice) override { notes.push_back("forget " + std::to_string(voice)); }

    Strings Take() { return std::exchange(notes, {}); }

    Strings notes;
    std::map<VoiceId, std::function<void()>> ends;
    VoiceId last = 0;

  private:
    void Note(const std::string& what, const std::string& path) {
        notes.push_back(what + " " + path.substr(path.rfind('/') + 1));
    }
};

class NotingPlayerListener : public IPlayerEventListener {
  public:
    void OnPlayerOpened(result r) override { notes.push_back(Succeeded(r) ? "opened" : "failed"); }
    void OnPlayerEndOfClip() override {
        notes.push_back("end");
        then();
    }
    void OnPlayerBuffering(int) override { notes.push_back("buffering"); }
    void OnPlayerErrorOccurred(result) override { notes.push_back("error"); }
    void OnPlayerInterrupted() override { notes.push_back("interrupted"); }
    void OnPlayerReleased() override { notes.push_back("released"); }

    Strings Take() { return std::exchange(notes, {}); }

    Strings notes;
    std::function<void()> then = [] {};
};

class PlayerTest : public testing::Test {
  protected:
    PlayerTest() {
        std::filesystem::create_directory(folder_ / "res");
        Testing::WriteText(folder_ / "res/a.mp3", "not looked at");
    }
    std::unique_ptr<Player> Opened() {
        auto player = std::make_unique<Player>();
        EXPECT_EQ(player->Construct(listener_), result::kSuccess);
        EXPECT_EQ(player->OpenFile("/Res/a.mp3"), result::kSuccess);
        test_.Settle();
        EXPECT_EQ(listener_.Take(), (Strings{"opened"}));
        return player;
    }

    Testing::TestLoop test_;
    Testing::TemporaryFolder folder_;
    Io::StorageMap storage_{Testing::StorageIn(folder_.Path(), folder_ / "res")};
    Io::StorageMap::Installed installedStorage_{storage_};
    SoundService sounds_{std::make_unique<NotingOutput>()};
    SoundService::Installed installedSounds_{sounds_};
    NotingOutput* output_ = static_cast<NotingOutput*>(sounds_.GetOutput());
    NotingPlayerListener listener_;
};

TEST_F(PlayerTest, RefusesWhatItsStateDoesNotAllow) {
    Player player;
    EXPECT_EQ(player.OpenFile("/Res/a.mp3"), result::kInvalidState);
    ASSERT_EQ(player.Construct(listener_), result::kSuccess);
    EXPECT_EQ(player.Play(), result::kInvalidState) << "no clip";
    EXPECT_EQ(player.OpenFile("/Res/missing.mp3"), result::kFileNotFound);
    ASSERT_EQ(player.OpenFile("/Res/a.mp3"), result::kSuccess);
    EXPECT_EQ(player.OpenFile("/Res/a.mp3"), result::kInvalidState);
    EXPECT_EQ(player.Stop(), result::kInvalidState);
    EXPECT_TRUE(listener_.notes.empty()) << "called from inside a call";
    ASSERT_EQ(player.Play(), result::kSuccess);
    EXPECT_EQ(player.Play(), result::kInvalidState);
    ASSERT_EQ(player.Stop(), result::kSuccess);
    EXPECT_EQ(player.Stop(), result::kInvalidState);
    EXPECT_EQ(player.Play(), result::kSuccess);
    EXPECT_EQ(output_->Take(), (Strings{"prepare a.mp3", "start a.mp3", "stop 1", "start a.mp3"}));
}

TEST_F(PlayerTest, HearsTheEndOfItsClipUnlessItWasStopped) {
    const auto player = Opened();
    ASSERT_EQ(player->Play(), result::kSuccess);
    output_->ends[1]();
    EXPECT_EQ(player->GetState(), PlayerState::kPlaying);
    test_.Settle();
    EXPECT_EQ(listener_.Take(), (Strings{"end"}));
    EXPECT_EQ(player->GetState(), PlayerState::kStopped);

    ASSERT_EQ(player->Play(), result::kSuccess);
    output_->ends[2]();
    ASSERT_EQ(player->Stop(), result::kSuccess);
    ASSERT_EQ(player->Play(), result::kSuccess);
    test_.Settle();
    EXPECT_TRUE(listener_.Take().empty()) << "the end of the round before";
    EXPECT_EQ(player->GetState(), PlayerState::kPlaying);
    ASSERT_EQ(player->Stop(), result::kSuccess);
    ASSERT_EQ(player->SetLooping(true), result::kSuccess);
    output_->Take();
    ASSERT_EQ(player->Play(), result::kSuccess);
    EXPECT_EQ(output_->Take(), (Strings{"loop a.mp3"}));
}

TEST_F(PlayerTest, ADeletedPlayerLetsItsSoundRingOut) {
    auto player = Opened();
    ASSERT_EQ(player->Play(), result::kSuccess);
    output_->Take();
    output_->ends[1]();
    player.reset();
    EXPECT_EQ(output_->Take(), (Strings{"forget 1", "release"}));
    test_.Settle();
    EXPECT_TRUE(listener_.Take().empty());

    player = Opened();
    ASSERT_EQ(player->Play(), result::kSuccess);
    listener_.then = [&player] { player.reset(); };
    output_->ends[2]();
    test_.Settle();
    EXPECT_EQ(player, nullptr) << "deleted in its own callback";
}

TEST_F(PlayerTest, WithoutAnOutputAClipEndsAtOnceUnlessItLoops) {
    SoundService silent(nullptr);
    const SoundService::Installed installed(silent);
    const auto player = Opened();
    for (const bool isLooping : {false, true}) {
        ASSERT_EQ(player->SetLooping(isLooping), result::kSuccess);
        ASSERT_EQ(player->Play(), result::kSuccess);
        test_.Pass(std::chrono::seconds(60));
        EXPECT_EQ(listener_.Take(), isLooping ? Strings{} : Strings{"end"});
    }
}

}  // namespace
}  // namespace Osp::Media
