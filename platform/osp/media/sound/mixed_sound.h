// The sound output of a machine that may have a loudspeaker.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "osp/base/event_loop.h"
#include "osp/media/sound/sound_backend.h"
#include "osp/media/sound/sound_output.h"

namespace Osp::Media {

/// Loads its backend, opens the device and decodes each clip on a worker, a while after the first
/// clip is asked for, so that the start of the program pays nothing. Without a device, and for
/// files that are no sound, everything goes on as it would, in silence.
class MixedSound : public SoundOutput {
  public:
    /// Called once, by a worker; null where there is no backend.
    using LoadBackend = std::function<std::unique_ptr<SoundBackend>()>;

    explicit MixedSound(LoadBackend loadBackend);
    ~MixedSound() override;

    void Prepare(const std::string& realPath) override;
    void Release() override;
    VoiceId Start(const std::string& realPath, bool isLooping,
                  std::function<void()> ended) override;
    void Stop(VoiceId voice) override;
    void Forget(VoiceId voice) override;

  private:
    using Clip = std::shared_ptr<const SoundClip>;
    struct Engine;
    struct Voice {
        std::string realPath;
        bool isLooping;
        std::function<void()> ended;  // null once forgotten
        Base::TimePoint asked;
        Base::EventLoop::TimerId end = 0;  // 0 while it waits for its clip, and while looping
    };
    using Voices = std::map<VoiceId, Voice>;

    bool IsReady(const std::string& realPath) const;
    void Begin(VoiceId id, Voice& voice, const Clip& clip);
    void End(VoiceId id);

    void BeginWork();
    void Work();
    void OnWorkDone(const std::string& realPath, Clip clip);
    bool NeedsDevice() const;
    void WakeDevice(bool isAwake);

    Base::EventLoop& loop_;
    std::shared_ptr<SoundMixer> mixer_ = std::make_shared<SoundMixer>();
    std::shared_ptr<Engine> engine_;  // the worker's while isWorking_
    bool isWorking_ = false;
    bool mayWork_ = false;  // false while the program starts
    std::optional<Base::TimePoint> lastOpened_;
    bool isAwake_ = true;
    int users_ = 0;
    Base::EventLoop::TimerId workTimer_ = 0;
    Base::EventLoop::TimerId sleepTimer_ = 0;

    std::map<std::string, Clip> clips_;  // null until decoded
    std::deque<std::string> wanted_;     // to be decoded, the most urgent first
    Voices voices_;
    VoiceId lastVoice_ = 0;
};

}  // namespace Osp::Media
