#include "tests/support/virtual_camera/camera_node.h"

#include <algorithm>
#include <cstdio>
#include <spa/param/buffers.h>
#include <spa/param/param.h>
#include <spa/pod/builder.h>

namespace Osp::Testing {

namespace {

constexpr int kBuffers = 4;

pw_properties* MakeProperties(const NodeOptions& options) {
    pw_properties* const properties =
        pw_properties_new(PW_KEY_MEDIA_CLASS, "Video/Source", PW_KEY_MEDIA_ROLE, "Camera", nullptr);
    for (const auto& [key, value] : options.properties) {
        pw_properties_set(properties, key.c_str(), value.c_str());
    }
    return properties;
}

const spa_pod* BuildBuffers(spa_pod_builder& builder, const FrameMaker& maker) {
    spa_pod_frame object;
    spa_pod_builder_push_object(&builder, &object, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers);
    const std::pair<std::uint32_t, int> values[] = {
        {SPA_PARAM_BUFFERS_buffers, kBuffers},
        {SPA_PARAM_BUFFERS_blocks, 1},
        {SPA_PARAM_BUFFERS_size, static_cast<int>(maker.BufferBytes())},
        {SPA_PARAM_BUFFERS_stride, maker.StrideBytes()},
        {SPA_PARAM_BUFFERS_dataType, 1 << SPA_DATA_MemFd}};
    for (const auto& [key, value] : values) {
        spa_pod_builder_prop(&builder, key, 0);
        spa_pod_builder_int(&builder, value);
    }
    return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &object));
}

const spa_pod* BuildHeader(spa_pod_builder& builder) {
    spa_pod_frame object;
    spa_pod_builder_push_object(&builder, &object, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta);
    spa_pod_builder_prop(&builder, SPA_PARAM_META_type, 0);
    spa_pod_builder_id(&builder, SPA_META_Header);
    spa_pod_builder_prop(&builder, SPA_PARAM_META_size, 0);
    spa_pod_builder_int(&builder, sizeof(spa_meta_header));
    return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &object));
}

void Stamp(spa_buffer& buffer, const TakenFrame& frame) {
    auto* const header = static_cast<spa_meta_header*>(
        spa_buffer_find_meta_data(&buffer, SPA_META_Header, sizeof(spa_meta_header)));
    if (header == nullptr) return;
    header->flags = 0;
    header->pts = frame.timeNs;
    header->dts_offset = 0;
    header->seq = frame.number;
}

}  // namespace

const pw_stream_events CameraNode::kEvents = [] {
    pw_stream_events events{};
    events.version = PW_VERSION_STREAM_EVENTS;
    events.state_changed = [](void* node, pw_stream_state before, pw_stream_state state,
                              const char* error) {
        static_cast<CameraNode*>(node)->OnStateChanged(before, state, error);
    };
    events.param_changed = [](void* node, std::uint32_t id, const spa_pod* format) {
        if (id == SPA_PARAM_Format) static_cast<CameraNode*>(node)->OnFormatChanged(format);
    };
    events.add_buffer = [](void* node, pw_buffer* buffer) {
        static_cast<CameraNode*>(node)->OnBufferAdded(buffer);
    };
    events.process = [](void* node) { static_cast<CameraNode*>(node)->OnProcess(); };
    return events;
}();

CameraNode::CameraNode(pw_core* core, const NodeOptions& options, const Behaviour& behaviour,
                       unsigned& lastNumber)
    : options_(options),
      behaviour_(behaviour),
      pacer_(pw_context_get_main_loop(pw_core_get_context(core)), behaviour, lastNumber,
             [this](const TakenFrame& frame) {
                 next_ = frame;
                 pw_stream_trigger_process(stream_.get());  // comes to OnProcess
                 next_.reset();
             }),
      stream_(pw_stream_new(core, "virtual-camera", MakeProperties(options))) {
    pw_stream_add_listener(stream_.get(), &listener_, &kEvents, this);
    std::uint8_t memory[16384];
    spa_pod_builder builder;
    spa_pod_builder_init(&builder, memory, sizeof memory);
    std::vector<const spa_pod*> offers = BuildOffers(options.modes, builder);
    constexpr auto kFlags =
        static_cast<pw_stream_flags>(PW_STREAM_FLAG_DRIVER | PW_STREAM_FLAG_MAP_BUFFERS);
    pw_stream_connect(stream_.get(), PW_DIRECTION_OUTPUT, PW_ID_ANY, kFlags, offers.data(),
                      static_cast<std::uint32_t>(offers.size()));
}

void CameraNode::Offer(const std::vector<Mode>& modes) {
    std::uint8_t memory[16384];
    spa_pod_builder builder;
    spa_pod_builder_init(&builder, memory, sizeof memory);
    std::vector<const spa_pod*> offers = BuildOffers(modes, builder);
    pw_stream_update_params(stream_.get(), offers.data(),
                            static_cast<std::uint32_t>(offers.size()));
}

void CameraNode::Fail(int error, const std::string& text) {
    pacer_.Stop();
    pw_stream_set_error(stream_.get(), error, "%s", text.c_str());
}

void CameraNode::OnStateChanged(pw_stream_state before, pw_stream_state state, const char* error) {
    if (state == PW_STREAM_STATE_STREAMING && mode_) {
        StartStreaming();
        return;
    }
    pacer_.Stop();
    if (state == PW_STREAM_STATE_ERROR) {
        std::printf("failed %s\n", error == nullptr ? "" : error);
    } else if (state == PW_STREAM_STATE_PAUSED && before == PW_STREAM_STATE_CONNECTING) {
        std::printf("ready %u\n", pw_stream_get_node_id(stream_.get()));
    } else if (state == PW_STREAM_STATE_PAUSED && before == PW_STREAM_STATE_STREAMING) {
        std::puts("paused");
    }
}

void CameraNode::StartStreaming() {
    std::printf("streaming %s\n", Describe(*mode_).c_str());
    pacer_.Start(mode_->rate);
}

void CameraNode::OnFormatChanged(const spa_pod* format) {
    mode_ = format == nullptr ? std::nullopt : ReadFormat(format);
    if (!mode_) return;
    maker_ = std::make_unique<FrameMaker>(*mode_, options_.paddingBytes);
    std::uint8_t memory[1024];
    spa_pod_builder builder;
    spa_pod_builder_init(&builder, memory, sizeof memory);
    const spa_pod* parameters[] = {BuildBuffers(builder, *maker_), BuildHeader(builder)};
    pw_stream_update_params(stream_.get(), parameters, 2);
    // Another mode in mid-stream comes without a change of state.
    if (pw_stream_get_state(stream_.get(), nullptr) == PW_STREAM_STATE_STREAMING) StartStreaming();
}

void CameraNode::OnBufferAdded(pw_buffer* buffer) {
    const spa_data& data = buffer->buffer->datas[0];
    if (data.data == nullptr || data.maxsize < maker_->BufferBytes()) return;
    maker_->Prepare(static_cast<std::uint8_t*>(data.data));
}

void CameraNode::OnProcess() {
    if (!next_) return;
    pw_buffer* const buffer = pw_stream_dequeue_buffer(stream_.get());
    if (buffer == nullptr) return;  // the consumer keeps them all: the frame is lost
    Fill(*buffer->buffer, *next_);
    pw_stream_queue_buffer(stream_.get(), buffer);
    if (options_.isVerbose) std::printf("frame %u\n", next_->number);
}

void CameraNode::Fill(spa_buffer& buffer, const TakenFrame& frame) {
    const spa_data& data = buffer.datas[0];
    if (data.data == nullptr || data.maxsize < maker_->BufferBytes()) return;
    auto* const bytes = static_cast<std::uint8_t*>(data.data);
    const std::size_t size = maker_->Draw(bytes, frame.number);
    const bool isJpeg = maker_->StrideBytes() == 0;
    if (behaviour_.isDamaged && isJpeg) std::fill_n(bytes + size / 4, size / 2, 0xA5);
    spa_chunk& chunk = *data.chunk;
    chunk.offset = 0;
    chunk.size = static_cast<std::uint32_t>(behaviour_.isShort ? size / 2 : size);
    chunk.stride = behaviour_.strideBytes > 0 ? behaviour_.strideBytes : maker_->StrideBytes();
    chunk.flags = behaviour_.isDamaged && !isJpeg ? SPA_CHUNK_FLAG_CORRUPTED : 0;
    Stamp(buffer, frame);
}

}  // namespace Osp::Testing
