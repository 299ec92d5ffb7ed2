#include "osp/media/camera/generated_camera.h"

#include <array>
#include <cassert>
#include <utility>

#include "osp/base/background.h"
#include "osp/media/camera/i420.h"

// A stream is an object of its own, which timers and workers' answers hold weakly: what comes back
// after Stop finds its stream gone and does nothing, also when the next stream runs already. Frames
// are due at whole thirtieths of a second from the stream's start, computed from the start and not
// from the frame before, so that rounding does not add up. What a frame shows depends on the clock
// alone: two streams that run at one moment show the same.

namespace Osp::Media {

namespace {

using Base::ByteBuffer;
using Base::Duration;
using Base::EventLoop;
using Graphics::Dimension;

constexpr std::array kPrimaryPreviewSizes = {Dimension{640, 480}, Dimension{800, 480}};
constexpr std::array kSecondaryPreviewSizes = {Dimension{640, 480}};
constexpr long long kMicrosecondsASecond = 1'000'000;

}  // namespace

struct GeneratedCamera::Stream {
    Base::TimePoint start{};
    long long tick = 0;  // of the next timer
    EventLoop::TimerId timer = 0;
    bool isMakingFrame = false;
    bool hasShownFrame = false;
    bool isPreparingStill = false;
    StreamSettings prepared;
};

GeneratedCamera::GeneratedCamera(std::string id, CameraSelection selection)
    : id_(std::move(id)), selection_(selection) {}

std::span<const Dimension> GeneratedCamera::PreviewSizes() const {
    if (selection_ == CameraSelection::kSecondary) return kSecondaryPreviewSizes;
    return kPrimaryPreviewSizes;
}

result GeneratedCamera::Open(CameraDeviceClient& client) {
    assert(client_ == nullptr);
    client_ = &client;
    return result::kSuccess;
}

result GeneratedCamera::Start(const StreamSettings& settings) {
    assert(client_ != nullptr && stream_ == nullptr);
    settings_ = settings;
    stream_ = std::make_shared<Stream>();
    stream_->start = EventLoop::Current().GetClock().Now();
    OnTick(stream_);
    return result::kSuccess;
}

void GeneratedCamera::Change(const StreamSettings& settings) {
    assert(stream_ != nullptr);
    assert(settings.previewSize == settings_.previewSize &&
           settings.stillSize == settings_.stillSize);
    settings_ = settings;
    if (stream_->hasShownFrame) PrepareStill(stream_);
}

void GeneratedCamera::Stop() {
    if (stream_ == nullptr) return;
    EventLoop::Current().CancelTimer(stream_->timer);
    stream_ = nullptr;
}

result GeneratedCamera::RequestStill() {
    assert(stream_ != nullptr);
    StillJob job = MakeStillJob(settings_, FrameNumberNow());
    struct Still {
        ByteBuffer jpeg;
        result r = result::kFailure;
    };
    const auto still = std::make_shared<Still>();
    Base::RunInBackground(
        [work = std::move(job.work), still] { still->r = work(still->jpeg); },
        [this, stream = std::weak_ptr(stream_), still, delivered = std::move(job.delivered)] {
            if (stream.expired()) return;
            if (delivered && Succeeded(still->r)) delivered();
            client_->OnStill(std::move(still->jpeg), still->r);
        });
    return result::kSuccess;
}

GeneratedCamera::PrepareJob GeneratedCamera::MakePrepareJob(const StreamSettings&) {
    return nullptr;
}

void GeneratedCamera::InStream(Duration delay, std::function<void()> task) {
    EventLoop::Current().StartTimer(Base::EventClass::kSystem, delay,
                                    [stream = std::weak_ptr(stream_), task = std::move(task)] {
                                        if (!stream.expired()) task();
                                    });
}

void GeneratedCamera::OnTick(const std::shared_ptr<Stream>& stream) {
    if (!stream->isMakingFrame && client_->WantsFrame()) MakeFrame(stream);
    EventLoop& loop = EventLoop::Current();
    const Duration now = loop.GetClock().Now();
    Duration due{};
    do {  // after a long pause the frames that are past are left out
        due = stream->start + Duration(++stream->tick * kMicrosecondsASecond / kFramesASecond);
    } while (due <= now);
    stream->timer =
        loop.StartTimer(Base::EventClass::kSystem, due - now, [this, stream] { OnTick(stream); });
}

void GeneratedCamera::MakeFrame(const std::shared_ptr<Stream>& stream) {
    stream->isMakingFrame = true;
    const auto frame = std::make_shared<ByteBuffer>();
    Base::RunInBackground(
        [job = MakeFrameJob(settings_, FrameNumberNow()), frame,
         bytes = static_cast<int>(I420Bytes(settings_.previewSize))] {
            ByteBuffer made;
            if (Failed(made.Construct(bytes))) return;
            job(made);
            *frame = std::move(made);  // whole or not at all: the job may run out of memory
        },
        [this, weak = std::weak_ptr(stream), frame] {
            const auto current = weak.lock();
            if (current == nullptr) return;
            current->isMakingFrame = false;
            if (frame->GetCapacity() == 0) return;
            client_->OnFrame(std::move(*frame));
            // Only now, so that nothing competes with the first frame.
            if (!std::exchange(current->hasShownFrame, true)) PrepareStill(current);
        });
}

void GeneratedCamera::PrepareStill(const std::shared_ptr<Stream>& stream) {
    if (stream->isPreparingStill || stream->prepared == settings_) return;
    PrepareJob job = MakePrepareJob(settings_);
    if (!job) return;
    stream->isPreparingStill = true;
    stream->prepared = settings_;
    Base::RunInBackground(std::move(job), [this, weak = std::weak_ptr(stream)] {
        const auto current = weak.lock();
        if (current == nullptr) return;
        current->isPreparingStill = false;
        PrepareStill(current);  // the settings may have changed meanwhile
    });
}

// The time of a tick is up to a microsecond early, hence the one more.
long long GeneratedCamera::FrameNumberNow() const {
    const auto now = EventLoop::Current().GetClock().Now();
    return (now.count() + 1) * kFramesASecond / kMicrosecondsASecond;
}

}  // namespace Osp::Media
