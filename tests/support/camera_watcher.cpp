#include "tests/support/camera_watcher.h"

#include <algorithm>
#include <spa/param/buffers.h>
#include <spa/param/param.h>
#include <spa/pod/builder.h>

namespace Osp::Testing {

namespace {

using Clock = std::chrono::steady_clock;

const spa_pod* BuildHeader(spa_pod_builder& builder) {
    spa_pod_frame object;
    spa_pod_builder_push_object(&builder, &object, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta);
    spa_pod_builder_prop(&builder, SPA_PARAM_META_type, 0);
    spa_pod_builder_id(&builder, SPA_META_Header);
    spa_pod_builder_prop(&builder, SPA_PARAM_META_size, 0);
    spa_pod_builder_int(&builder, sizeof(spa_meta_header));
    return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &object));
}

pw_main_loop* MakeLoop() {
    pw_init(nullptr, nullptr);
    return pw_main_loop_new(nullptr);
}

}  // namespace

const pw_stream_events CameraWatcher::kEvents = [] {
    pw_stream_events events{};
    events.version = PW_VERSION_STREAM_EVENTS;
    events.param_changed = [](void* data, std::uint32_t id, const spa_pod* format) {
        if (id != SPA_PARAM_Format || format == nullptr) return;
        auto& watcher = *static_cast<CameraWatcher*>(data);
        watcher.mode_ = ReadFormat(format);
        std::uint8_t memory[256];
        spa_pod_builder builder;
        spa_pod_builder_init(&builder, memory, sizeof memory);
        const spa_pod* header = BuildHeader(builder);
        pw_stream_update_params(watcher.stream_.get(), &header, 1);
    };
    events.process = [](void* watcher) { static_cast<CameraWatcher*>(watcher)->OnProcess(); };
    return events;
}();

CameraWatcher::CameraWatcher(const std::string& camera, const std::vector<Mode>& modes)
    : mainLoop_(MakeLoop()),
      context_(pw_context_new(pw_main_loop_get_loop(mainLoop_.get()), nullptr, 0)),
      core_(pw_context_connect(context_.get(), nullptr, 0)),
      stream_(pw_stream_new(
          core_.get(), "camera-watcher",
          pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture",
                            PW_KEY_MEDIA_ROLE, "Camera", PW_KEY_TARGET_OBJECT, camera.c_str(),
                            PW_KEY_NODE_DONT_RECONNECT, "true", nullptr))) {
    pw_stream_add_listener(stream_.get(), &listener_, &kEvents, this);
    std::uint8_t memory[4096];
    spa_pod_builder builder;
    spa_pod_builder_init(&builder, memory, sizeof memory);
    std::vector<const spa_pod*> offers = BuildOffers(modes, builder);
    constexpr auto kFlags =
        static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS);
    pw_stream_connect(stream_.get(), PW_DIRECTION_INPUT, PW_ID_ANY, kFlags, offers.data(),
                      static_cast<std::uint32_t>(offers.size()));
}

std::vector<SeenFrame> CameraWatcher::Collect(std::size_t count, std::chrono::milliseconds limit) {
    pw_loop* const loop = pw_main_loop_get_loop(mainLoop_.get());
    seen_.clear();
    pw_loop_enter(loop);
    for (const auto end = Clock::now() + limit; seen_.size() < count && Clock::now() < end;) {
        pw_loop_iterate(loop, 10);
    }
    pw_loop_leave(loop);
    return std::move(seen_);
}

void CameraWatcher::OnProcess() {
    pw_buffer* const buffer = pw_stream_dequeue_buffer(stream_.get());
    if (buffer == nullptr) return;
    const spa_data& data = buffer->buffer->datas[0];
    const auto* const bytes = static_cast<const std::uint8_t*>(data.data);
    const auto* const header = static_cast<const spa_meta_header*>(
        spa_buffer_find_meta_data(buffer->buffer, SPA_META_Header, sizeof(spa_meta_header)));
    if (mode_ && bytes != nullptr && header != nullptr) {
        const std::chrono::nanoseconds now = Clock::now().time_since_epoch();
        seen_.push_back({*mode_,
                         {bytes, bytes + std::min(data.chunk->size, data.maxsize)},
                         data.chunk->stride,
                         (data.chunk->flags & SPA_CHUNK_FLAG_CORRUPTED) != 0,
                         static_cast<int>(header->seq),
                         now - std::chrono::nanoseconds(header->pts)});
    }
    pw_stream_queue_buffer(stream_.get(), buffer);
}

}  // namespace Osp::Testing
