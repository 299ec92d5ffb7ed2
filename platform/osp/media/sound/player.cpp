#include <filesystem>
#include <string>

#include <osp/media/player.h>

#include "osp/base/event_source.h"
#include "osp/io/storage_map.h"
#include "osp/media/sound/sound_service.h"

namespace Osp::Media {

class PlayerVoice {
  public:
    explicit PlayerVoice(IPlayerEventListener& listener) : listener_(listener) {}
    ~PlayerVoice();

    result Open(const Base::String& path);
    result Play();
    result Stop();

    PlayerState state_ = PlayerState::kInitial;
    bool looping_ = false;

  private:
    void PostEnd();

    IPlayerEventListener& listener_;
    Base::EventSource events_;
    std::string virtualPath_;
    std::string realPath_;
    SoundOutput::VoiceId voice_ = 0;
};

PlayerVoice::~PlayerVoice() {
    SoundOutput* const output = SoundService::Current().GetOutput();
    if (output == nullptr || state_ == PlayerState::kInitial) return;
    output->Forget(voice_);  // a shutter sound outlives the session that played it
    output->Release();
}

result PlayerVoice::Open(const Base::String& path) {
    if (state_ != PlayerState::kInitial) return result::kInvalidState;
    const result r = Io::StorageMap::Current().Resolve(path, Io::Access::kRead, realPath_);
    if (Failed(r)) return r;
    if (!std::filesystem::is_regular_file(realPath_)) return result::kFileNotFound;
    virtualPath_ = path.ToUtf8();
    if (SoundOutput* output = SoundService::Current().GetOutput()) output->Prepare(realPath_);
    state_ = PlayerState::kOpened;
    events_.Post([this] { listener_.OnPlayerOpened(result::kSuccess); });
    return result::kSuccess;
}

result PlayerVoice::Play() {
    if (state_ == PlayerState::kInitial || state_ == PlayerState::kPlaying) {
        return result::kInvalidState;
    }
    state_ = PlayerState::kPlaying;
    SoundService& service = SoundService::Current();
    service.RecordStart(virtualPath_);
    if (SoundOutput* output = service.GetOutput()) {
        voice_ = output->Start(realPath_, looping_, [this] { PostEnd(); });
    } else if (!looping_) {
        PostEnd();
    }
    return result::kSuccess;
}

result PlayerVoice::Stop() {
    if (state_ != PlayerState::kPlaying) return result::kInvalidState;
    if (SoundOutput* output = SoundService::Current().GetOutput()) output->Stop(voice_);
    voice_ = 0;
    events_.Drop();
    state_ = PlayerState::kStopped;
    return result::kSuccess;
}

void PlayerVoice::PostEnd() {
    events_.Post([this] {
        state_ = PlayerState::kStopped;
        listener_.OnPlayerEndOfClip();
    });
}

Player::Player() = default;
Player::~Player() = default;

result Player::Construct(IPlayerEventListener& listener) {
    if (voice_) return result::kInvalidState;
    voice_ = std::make_unique<PlayerVoice>(listener);
    return result::kSuccess;
}

result Player::OpenFile(const Base::String& path) {
    return voice_ ? voice_->Open(path) : result::kInvalidState;
}

result Player::SetLooping(bool looping) {
    if (!voice_) return result::kInvalidState;
    voice_->looping_ = looping;
    return result::kSuccess;
}

result Player::Play() {
    return voice_ ? voice_->Play() : result::kInvalidState;
}

result Player::Stop() {
    return voice_ ? voice_->Stop() : result::kInvalidState;
}

PlayerState Player::GetState() const {
    return voice_ ? voice_->state_ : PlayerState::kInitial;
}

}  // namespace Osp::Media
