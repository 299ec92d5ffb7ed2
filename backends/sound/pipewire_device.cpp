#include "backends/sound/pipewire_device.h"

#include <algorithm>
#include <atomic>
#include <pipewire/pipewire.h>
#include <spa/param/audio/format-utils.h>

#include "osp/base/owner.h"

// OnProcess runs in a thread of the sound library, on the sound card's clock, which is neither the
// loop's nor ever quite as fast. The card's side asks: it says how many frames it wants, and the
// mixer makes exactly as many. So no queue lies between the two clocks that could run dry or over,
// and their jitter shifts a sound's start by a block at most.

namespace Osp::Media {

namespace {

constexpr std::size_t kFrameBytes = kSoundChannels * sizeof(float);
// About ten milliseconds, in frames: a shutter is heard when it is pressed.
constexpr const char* kLatency = "512/48000";

/// One stream that plays for as long as the object lives. The daemon's sinks may come and go
/// meanwhile.
class PipewireDevice : public SoundDevice {
  public:
    explicit PipewireDevice(std::shared_ptr<SoundMixer> mixer) : mixer_(std::move(mixer)) {}
    ~PipewireDevice() override {
        // Ends the thread first, so that nothing runs while the stream goes.
        if (loop_) pw_thread_loop_stop(loop_.get());
    }

    bool Connect();
    void SetActive(bool isActive) override;
    bool IsLost() const override { return isLost_; }

  private:
    static const pw_stream_events kEvents;

    void OnStateChanged(pw_stream_state state);
    void OnProcess();

    std::shared_ptr<SoundMixer> mixer_;
    std::atomic<bool> isLost_ = false;
    Base::Owner<pw_thread_loop, pw_thread_loop_destroy> loop_;  // outlives the stream
    Base::Owner<pw_stream, pw_stream_destroy> stream_;
};

const pw_stream_events PipewireDevice::kEvents = [] {
    pw_stream_events events{};
    events.version = PW_VERSION_STREAM_EVENTS;
    events.state_changed = [](void* device, pw_stream_state, pw_stream_state state, const char*) {
        static_cast<PipewireDevice*>(device)->OnStateChanged(state);
    };
    events.process = [](void* device) { static_cast<PipewireDevice*>(device)->OnProcess(); };
    return events;
}();

bool PipewireDevice::Connect() {
    loop_.reset(pw_thread_loop_new("kivo-sound", nullptr));
    if (!loop_) return false;
    stream_.reset(pw_stream_new_simple(
        pw_thread_loop_get_loop(loop_.get()), "KIVO Camera",
        pw_properties_new(PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_MEDIA_CATEGORY, "Playback",
                          PW_KEY_MEDIA_ROLE, "Notification", PW_KEY_NODE_NAME, "kivo-camera",
                          PW_KEY_NODE_LATENCY, kLatency, nullptr),
        &kEvents, this));
    if (!stream_) return false;
    std::uint8_t memory[1024];
    spa_pod_builder builder;
    spa_pod_builder_init(&builder, memory, sizeof memory);
    spa_audio_info_raw format{};
    format.format = SPA_AUDIO_FORMAT_F32;
    format.rate = kSoundRate;
    format.channels = kSoundChannels;
    format.position[0] = SPA_AUDIO_CHANNEL_FL;
    format.position[1] = SPA_AUDIO_CHANNEL_FR;
    const spa_pod* parameters[] = {
        spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format)};
    constexpr auto kFlags = static_cast<pw_stream_flags>(
        PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS);
    return pw_stream_connect(stream_.get(), PW_DIRECTION_OUTPUT, PW_ID_ANY, kFlags, parameters,
                             1) == 0 &&
           pw_thread_loop_start(loop_.get()) == 0;
}

void PipewireDevice::SetActive(bool isActive) {
    pw_thread_loop_lock(loop_.get());
    pw_stream_set_active(stream_.get(), isActive);
    pw_thread_loop_unlock(loop_.get());
}

void PipewireDevice::OnStateChanged(pw_stream_state state) {
    if (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED) isLost_ = true;
}

void PipewireDevice::OnProcess() {
    pw_buffer* const buffer = pw_stream_dequeue_buffer(stream_.get());
    if (buffer == nullptr) return;
    spa_data& data = buffer->buffer->datas[0];
    if (data.data != nullptr) {
        std::size_t frames = data.maxsize / kFrameBytes;
        if (buffer->requested > 0) frames = std::min<std::size_t>(frames, buffer->requested);
        mixer_->Mix({static_cast<float*>(data.data), frames * kSoundChannels});
        data.chunk->offset = 0;
        data.chunk->stride = kFrameBytes;
        data.chunk->size = static_cast<std::uint32_t>(frames * kFrameBytes);
    }
    pw_stream_queue_buffer(stream_.get(), buffer);
}

}  // namespace

std::unique_ptr<SoundDevice> OpenPipewireDevice(std::shared_ptr<SoundMixer> mixer) {
    auto device = std::make_unique<PipewireDevice>(std::move(mixer));
    if (!device->Connect()) return nullptr;
    return device;
}

}  // namespace Osp::Media
