#include "backends/pipewire/pipewire_source.h"

#include <algorithm>
#include <chrono>
#include <spa/buffer/buffer.h>
#include <span>
#include <string_view>
#include <utility>

#include "backends/pipewire/video_formats.h"

// All callbacks come on PipeWire's thread with the connection's lock held, and so does everything
// that touches the stream; a stream that has been destroyed under the lock delivers nothing any
// more. Pictures are converted inside the callback, because the buffer's memory may go with the
// next event.
//
// A size or format that the camera does not have leaves a stream paused for ever without a word,
// and a camera that vanishes ends none: the first is left to who watches the pictures, the second
// is seen in the registry.

namespace Osp::Media {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestAnswer = 500ms;

bool SaysBusy(std::string_view error) {
    return error.find("busy") != std::string_view::npos ||
           error.find("Busy") != std::string_view::npos;
}

/// What the camera has put into one block of a buffer; empty for what is outside of its memory.
std::span<const std::uint8_t> BytesOf(const spa_data& data) {
    if (data.data == nullptr || data.chunk == nullptr) return {};
    const std::uint32_t offset = std::min(data.chunk->offset, data.maxsize);
    const std::uint32_t size = std::min(data.chunk->size, data.maxsize - offset);
    return {static_cast<const std::uint8_t*>(data.data) + offset, size};
}

bool IsDamaged(const spa_data& data) {
    return data.chunk == nullptr || (data.chunk->flags & SPA_CHUNK_FLAG_CORRUPTED) != 0 ||
           data.chunk->size == 0 || data.chunk->stride < 0;
}

}  // namespace

const pw_stream_events PipewireSource::kEvents = [] {
    pw_stream_events events{};
    events.version = PW_VERSION_STREAM_EVENTS;
    events.state_changed = [](void* source, pw_stream_state, pw_stream_state state,
                              const char* error) {
        static_cast<PipewireSource*>(source)->OnStateChanged(state, error);
    };
    events.param_changed = [](void* source, std::uint32_t id, const spa_pod* parameter) {
        if (id == SPA_PARAM_Format) static_cast<PipewireSource*>(source)->OnFormat(parameter);
    };
    events.process = [](void* source) { static_cast<PipewireSource*>(source)->OnProcess(); };
    return events;
}();

PipewireSource::PipewireSource(PipewireConnection& connection, std::string id)
    : connection_(connection), id_(std::move(id)) {
    const PipewireConnection::Lock lock(connection_);
    connection_.Add(*this);
    wasThere_ = Camera() != nullptr;
}

PipewireSource::~PipewireSource() {
    Stop();
    const PipewireConnection::Lock lock(connection_);
    connection_.Remove(*this);
}

// Null while there is none, or no daemon.
const PipewireCamera* PipewireSource::Camera() const {
    const PipewireGraph* const graph = connection_.Graph();
    return graph == nullptr ? nullptr : graph->Find(id_);
}

bool PipewireSource::IsThere() const {
    const PipewireConnection::Lock lock(connection_);
    return wasThere_;
}

void PipewireSource::Watch(std::function<void()> changed) {
    const PipewireConnection::Lock lock(connection_);
    changed_ = std::move(changed);
}

std::vector<VideoMode> PipewireSource::Modes() const {
    const PipewireConnection::Lock lock(connection_);
    const PipewireCamera* const camera = Camera();
    return camera == nullptr ? std::vector<VideoMode>() : camera->info.modes;
}

result PipewireSource::Start(const VideoMode& mode, std::shared_ptr<VideoSink> sink) {
    Stop();
    const auto limit = std::chrono::steady_clock::now() + kLongestAnswer;
    result r = result::kIo;
    {
        const PipewireConnection::Lock lock(connection_);
        const PipewireCamera* const camera = Camera();
        if (camera == nullptr) return result::kObjectNotFound;
        sink_ = std::move(sink);
        controls_.Open(camera->file);
        if (Connect(*camera, mode)) r = AwaitAnswer(limit);
        if (Failed(r)) End();
    }
    if (Failed(r)) {
        controls_.Close();
    } else {
        controls_.WaitUntilKnown(limit);
    }
    return r;
}

void PipewireSource::Stop() {
    controls_.Close();
    const PipewireConnection::Lock lock(connection_);
    End();
}

void PipewireSource::End() {
    stream_.reset();
    sink_.reset();
    nodeId_ = 0;
    format_ = {};
    error_.clear();
    state_ = PW_STREAM_STATE_UNCONNECTED;
}

bool PipewireSource::Connect(const PipewireCamera& camera, const VideoMode& mode) {
    nodeId_ = camera.nodeId;
    stream_.reset(pw_stream_new(
        connection_.Core(), "preview",
        pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture",
                          PW_KEY_MEDIA_ROLE, "Camera", PW_KEY_TARGET_OBJECT, camera.serial.c_str(),
                          PW_KEY_NODE_DONT_RECONNECT, "true", nullptr)));
    if (!stream_) return false;
    pw_stream_add_listener(stream_.get(), &hook_, &kEvents, this);
    std::uint8_t memory[1024];
    spa_pod_builder builder;
    spa_pod_builder_init(&builder, memory, sizeof memory);
    const spa_pod* parameters[] = {BuildFormat(builder, mode)};
    constexpr auto kFlags = static_cast<pw_stream_flags>(
        PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_DONT_RECONNECT);
    state_ = PW_STREAM_STATE_CONNECTING;
    return pw_stream_connect(stream_.get(), PW_DIRECTION_INPUT, PW_ID_ANY, kFlags, parameters, 1) ==
           0;
}

result PipewireSource::AwaitAnswer(std::chrono::steady_clock::time_point limit) {
    while (stream_ && error_.empty() && state_ != PW_STREAM_STATE_UNCONNECTED) {
        if (state_ == PW_STREAM_STATE_STREAMING) return result::kSuccess;
        if (connection_.Wait(limit)) continue;
        // A device that has failed before says nothing new. A slow one may still begin; the
        // pictures will tell.
        const PipewireCamera* const camera = Camera();
        error_ = camera == nullptr ? "gone" : connection_.Graph()->ErrorOf(*camera);
        if (error_.empty()) return result::kSuccess;
    }
    return IsTaken() ? result::kDeviceBusy : result::kIo;
}

/// Whether the stream has failed because of somebody else: by the device's own words, or because it
/// was not connected while another program's was, which then has the device for itself.
bool PipewireSource::IsTaken() const {
    if (SaysBusy(error_)) return true;
    const PipewireCamera* const camera = Camera();
    return camera != nullptr && state_ == PW_STREAM_STATE_UNCONNECTED &&
           !connection_.Graph()->UsersOf(*camera).empty();
}

void PipewireSource::OnStateChanged(pw_stream_state state, const char* error) {
    const pw_stream_state before = std::exchange(state_, state);
    if (state == PW_STREAM_STATE_ERROR) error_ = error != nullptr ? error : "error";
    const bool hasEnded = state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED;
    if (hasEnded && before == PW_STREAM_STATE_STREAMING && sink_) sink_->OnEnded();
    connection_.Signal();
}

void PipewireSource::OnFormat(const spa_pod* parameter) {
    format_ = {};
    if (parameter == nullptr) return;
    const auto format = ReadFormat(*parameter);
    if (!format) return;
    format_ = *format;
    std::uint8_t memory[512];
    spa_pod_builder builder;
    spa_pod_builder_init(&builder, memory, sizeof memory);
    const spa_pod* parameters[] = {static_cast<const spa_pod*>(spa_pod_builder_add_object(
        &builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
        SPA_POD_CHOICE_RANGE_Int(4, 2, 8), SPA_PARAM_BUFFERS_dataType,
        SPA_POD_CHOICE_FLAGS_Int((1 << SPA_DATA_MemPtr) | (1 << SPA_DATA_MemFd))))};
    pw_stream_update_params(stream_.get(), parameters, 1);
}

// Of several that have piled up the last is the one that shows what there is now.
void PipewireSource::OnProcess() {
    pw_buffer* newest = nullptr;
    while (pw_buffer* buffer = pw_stream_dequeue_buffer(stream_.get())) {
        if (newest != nullptr) pw_stream_queue_buffer(stream_.get(), newest);
        newest = buffer;
    }
    if (newest == nullptr) return;
    if (sink_ && format_.size.width > 0) HandOver(*newest->buffer);
    pw_stream_queue_buffer(stream_.get(), newest);
}

void PipewireSource::HandOver(const spa_buffer& buffer) {
    const std::span<const spa_data> blocks(buffer.datas, buffer.n_datas);
    VideoPicture picture;
    if (blocks.empty() || std::ranges::any_of(blocks, IsDamaged) ||
        !LayOut(format_.format, format_.size, blocks[0].chunk->stride, BytesOf(blocks[0]),
                picture)) {
        sink_->OnDamage();
        return;
    }
    sink_->OnPicture(picture);
}

void PipewireSource::OnCamerasChanged() {
    const PipewireCamera* const camera = Camera();
    if (camera != nullptr && camera->nodeId == nodeId_) {
        const std::string error = connection_.Graph()->ErrorOf(*camera);
        if (!error.empty()) error_ = error;
        const bool hasFailed = !error.empty() && state_ == PW_STREAM_STATE_STREAMING;
        if (hasFailed && sink_) sink_->OnEnded();
    }
    const bool isThere = camera != nullptr;
    if (std::exchange(wasThere_, isThere) != isThere && changed_) changed_();
}

void PipewireSource::OnDisconnected() {
    End();
}

}  // namespace Osp::Media
