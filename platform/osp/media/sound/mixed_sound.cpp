#include "osp/media/sound/mixed_sound.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "osp/base/background.h"

namespace Osp::Media {

namespace {

using Base::Duration;
using Base::EventClass;
using std::chrono::milliseconds;
using std::chrono::seconds;

// By then the preview is there.
constexpr milliseconds kStartDelay{1000};
// A shutter that is heard later than this is worse than one that is not heard.
constexpr milliseconds kLatestStart{300};
// The players are made anew around every photograph, the device is not to fall asleep in between.
constexpr seconds kSleepDelay{5};
constexpr seconds kReopenInterval{10};
constexpr long long kMicrosecondsASecond = 1'000'000;

Duration LengthOf(const SoundClip& clip) {
    return Duration(static_cast<long long>(clip.Frames()) * kMicrosecondsASecond / kSoundRate);
}

}  // namespace

struct MixedSound::Engine {
    LoadBackend load;  // null once called
    std::unique_ptr<SoundBackend> backend;
    std::unique_ptr<SoundDevice> device;  // before the backend

    void Load() {
        if (const LoadBackend once = std::exchange(load, nullptr)) backend = once();
    }
    void OpenDevice(const std::shared_ptr<SoundMixer>& mixer) {
        device = nullptr;
        if (backend) device = backend->Open(mixer);
    }
    Clip Decode(const std::string& realPath) {
        return std::make_shared<SoundClip>(backend ? backend->Decode(realPath) : SoundClip{});
    }
};

MixedSound::MixedSound(LoadBackend loadBackend)
    : loop_(Base::EventLoop::Current()), engine_(std::make_shared<Engine>()) {
    engine_->load = std::move(loadBackend);
}

MixedSound::~MixedSound() {
    loop_.CancelTimer(workTimer_);
    loop_.CancelTimer(sleepTimer_);
    for (const auto& [id, voice] : voices_) loop_.CancelTimer(voice.end);
}

void MixedSound::Prepare(const std::string& realPath) {
    ++users_;
    loop_.CancelTimer(std::exchange(sleepTimer_, 0));
    WakeDevice(true);
    if (clips_.try_emplace(realPath).second) wanted_.push_back(realPath);
    if (mayWork_) {
        Work();
    } else if (workTimer_ == 0) {
        workTimer_ = loop_.StartTimer(EventClass::kSystem, kStartDelay, [this] { BeginWork(); });
    }
}

void MixedSound::Release() {
    if (--users_ > 0) return;
    sleepTimer_ = loop_.StartTimer(EventClass::kSystem, kSleepDelay, [this] { WakeDevice(false); });
}

bool MixedSound::IsReady(const std::string& realPath) const {
    const auto found = clips_.find(realPath);
    return found != clips_.end() && found->second != nullptr;
}

SoundOutput::VoiceId MixedSound::Start(const std::string& realPath, bool isLooping,
                                       std::function<void()> ended) {
    const VoiceId id = ++lastVoice_;
    Voice& voice = voices_[id];
    voice = {realPath, isLooping, std::move(ended), loop_.GetClock().Now()};
    if (IsReady(realPath)) {
        Begin(id, voice, clips_.at(realPath));
        return id;
    }
    const auto place = std::ranges::find(wanted_, realPath);
    if (place != wanted_.end()) std::rotate(wanted_.begin(), place, place + 1);
    BeginWork();
    return id;
}

void MixedSound::Begin(VoiceId id, Voice& voice, const Clip& clip) {
    const bool isInTime = loop_.GetClock().Now() - voice.asked <= kLatestStart;
    if (clip->Frames() > 0 && isInTime) mixer_->Start(id, clip, voice.isLooping);
    if (voice.isLooping) return;
    voice.end = loop_.StartTimer(EventClass::kSystem, LengthOf(*clip), [this, id] { End(id); });
}

void MixedSound::End(VoiceId id) {
    const auto node = voices_.extract(id);
    if (node.mapped().ended) node.mapped().ended();
}

void MixedSound::Stop(VoiceId voice) {
    const auto found = voices_.find(voice);
    if (found == voices_.end()) return;
    loop_.CancelTimer(found->second.end);
    mixer_->Stop(voice);
    voices_.erase(found);
}

void MixedSound::Forget(VoiceId voice) {
    const auto found = voices_.find(voice);
    if (found == voices_.end()) return;
    found->second.ended = nullptr;
    found->second.isLooping = false;
    mixer_->StopLooping(voice);
    // One that waits for its clip is kept, so that it can still begin.
    if (found->second.end == 0 && IsReady(found->second.realPath)) voices_.erase(found);
}

void MixedSound::BeginWork() {
    loop_.CancelTimer(workTimer_);
    mayWork_ = true;
    Work();
}

// A device that has gone, or was never there, is asked for again, but not with every photograph.
bool MixedSound::NeedsDevice() const {
    if (engine_->device != nullptr && !engine_->device->IsLost()) return false;
    return !lastOpened_ || loop_.GetClock().Now() - *lastOpened_ >= kReopenInterval;
}

void MixedSound::Work() {
    if (isWorking_) return;
    const bool needsDevice = NeedsDevice();
    if (wanted_.empty() && !needsDevice) return;
    isWorking_ = true;
    if (needsDevice) lastOpened_ = loop_.GetClock().Now();
    std::string path;
    if (!wanted_.empty()) {
        path = std::move(wanted_.front());
        wanted_.pop_front();
    }
    const auto clip = std::make_shared<Clip>();
    Base::RunInBackground(
        [engine = engine_, mixer = mixer_, needsDevice, path, clip] {
            engine->Load();
            if (needsDevice) engine->OpenDevice(mixer);
            if (!path.empty()) *clip = engine->Decode(path);
        },
        [this, engine = std::weak_ptr(engine_), path, clip] {
            if (!engine.expired()) OnWorkDone(path, std::move(*clip));
        });
}

void MixedSound::OnWorkDone(const std::string& realPath, Clip clip) {
    isWorking_ = false;
    if (engine_->device != nullptr) engine_->device->SetActive(isAwake_);
    if (clip != nullptr) {
        for (auto& [id, voice] : voices_) {
            if (voice.realPath == realPath) Begin(id, voice, clip);
        }
        clips_[realPath] = std::move(clip);
    }
    Work();
}

void MixedSound::WakeDevice(bool isAwake) {
    if (std::exchange(isAwake_, isAwake) == isAwake) return;
    if (!isWorking_ && engine_->device != nullptr) engine_->device->SetActive(isAwake);
}

}  // namespace Osp::Media
