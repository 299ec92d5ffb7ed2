#include "osp/media/live/live_camera.h"

#include <array>
#include <cassert>
#include <chrono>
#include <utility>

#include "osp/media/camera/camera_pictures.h"
#include "osp/media/live/video_modes.h"

// Two streams lie over each other. The source's is begun by the first Start and by Try, and ended
// by StopSource alone; intake_ exists exactly as long. The application's lies between Start and
// Stop; what the source's delivers reaches the client only within it. What holds between any two
// calls:
// - not present means that nothing reaches the client; a source that streams then is on trial, and
//   its first whole picture makes the camera present again;
// - the watch runs while anybody waits for pictures: the application or a trial;
// - presenceChanged_ makes the session call Stop, Close, Open and Start, so it is called from a
// task
//   of its own, with everything here settled before.
// What ends each: linger timer by Start, StopSource; watch by Stop, StopSource; try timer by Seek
// and StopSource's caller Lose; isSought by Seek. The background ends lingering.

namespace Osp::Media {

namespace {

using namespace std::chrono_literals;
using Base::EventLoop;
using Graphics::Dimension;

constexpr std::array kPrimaryPreviewSizes = {Dimension{640, 480}, Dimension{800, 480}};
constexpr std::array kSecondaryPreviewSizes = {Dimension{640, 480}};
constexpr auto kLinger = 5s;  // long enough for any photograph to be stored
constexpr auto kBetweenLooks = 250ms;
constexpr int kMostSilentLooks = 8;  // two seconds, which a device that starts slowly needs
constexpr auto kBetweenTries = 1s;

/// Large enough for the still of the back camera; the front camera's photograph is its preview.
Dimension UprightNeed(const StreamSettings& settings, CameraSelection selection) {
    return selection == CameraSelection::kPrimary ? settings.stillSize
                                                  : UprightSize(settings.previewSize, selection);
}

}  // namespace

LiveCamera::LiveCamera(std::string id, CameraSelection selection,
                       std::unique_ptr<VideoSource> source)
    : id_(std::move(id)), selection_(selection), source_(std::move(source)) {
    isPresent_ = source_->IsThere();
    source_->Watch([post = changes_.Poster(), this] { post([this] { OnSourceChanged(); }); });
}

LiveCamera::~LiveCamera() {
    source_->Watch({});
    StopSource();
    Cancel(tryTimer_);
}

std::span<const Dimension> LiveCamera::PreviewSizes() const {
    if (selection_ == CameraSelection::kSecondary) return kSecondaryPreviewSizes;
    return kPrimaryPreviewSizes;
}

void LiveCamera::WatchPresence(std::function<void(bool)> changed) {
    presenceChanged_ = std::move(changed);
}

result LiveCamera::Open(CameraDeviceClient& client) {
    assert(client_ == nullptr);
    client_ = &client;
    return result::kSuccess;
}

void LiveCamera::Close() {
    SwitchFlashOff();
    client_ = nullptr;
}

// Only a device that somebody else has fails to start: any other trouble is a camera that is not
// there, which the session hears of as of one that is unplugged.
result LiveCamera::Start(const StreamSettings& settings) {
    assert(client_ != nullptr && !isRunning_);
    settings_ = settings;
    const result r = StartSource();
    if (r == result::kDeviceBusy) return r;
    isRunning_ = true;
    if (Failed(r)) {
        stream_.Post([this] { Lose(); });
        return result::kSuccess;
    }
    SetControls();
    intake_->Begin(LeftToPictures(), frames_.Poster());
    WatchPictures();
    return result::kSuccess;
}

void LiveCamera::Change(const StreamSettings& settings) {
    settings_ = settings;
    if (!intake_) return;
    SetControls();
    intake_->Change(LeftToPictures());
}

void LiveCamera::Stop() {
    if (!std::exchange(isRunning_, false)) return;
    frames_.Drop();
    Cancel(watchTimer_);
    if (!intake_) {
        stream_.Drop();
        return;
    }
    intake_->End();
    if (!lingers_) {
        StopSource();
        return;
    }
    Cancel(lingerTimer_);
    lingerTimer_ = EventLoop::Current().StartTimer(Base::EventClass::kSystem, kLinger, [this] {
        lingerTimer_ = 0;
        StopSource();
    });
}

result LiveCamera::StartAutoFocus() {
    const result r = source_->Set(VideoControl::kFocus, 1);
    if (Succeeded(r)) frames_.Post([this] { client_->OnFocused(true); });
    return r;
}

result LiveCamera::RequestStill() {
    assert(isRunning_);
    if (!intake_) return result::kIo;
    intake_->RequestStill();
    return result::kSuccess;
}

void LiveCamera::SwitchFlashOff() {
    if (source_->Has(VideoControl::kFlash)) (void)source_->Set(VideoControl::kFlash, 0);
}

// Unplugged by order the device may well be there: then there is nothing to try.
void LiveCamera::Seek(const StreamSettings& settings) {
    isSought_ = true;
    settings_ = settings;
    if (!isPresent_) Try();
}

void LiveCamera::StopSeeking() {
    isSought_ = false;
    Cancel(tryTimer_);
    if (!isPresent_) StopSource();  // a trial that nobody waits for any more
}

void LiveCamera::SetLingers(bool lingers) {
    lingers_ = lingers;
    if (!lingers && !isRunning_ && isPresent_) StopSource();
}

result LiveCamera::StartSource() {
    Cancel(lingerTimer_);
    const auto mode = ChooseMode(source_->Modes(), UprightNeed(settings_, selection_));
    if (!mode) return result::kObjectNotFound;
    if (intake_ && mode_ == *mode) return result::kSuccess;
    StopSource();
    auto intake = std::make_shared<PictureIntake>(selection_, MakeHandlers(), stream_.Poster());
    const result r = source_->Start(*mode, intake);
    if (Failed(r)) return r;
    mode_ = *mode;
    intake_ = std::move(intake);
    seenPictures_ = 0;
    return result::kSuccess;
}

void LiveCamera::StopSource() {
    source_->Stop();
    stream_.Drop();
    intake_.reset();
    Cancel(lingerTimer_);
    Cancel(watchTimer_);
}

PictureIntake::Handlers LiveCamera::MakeHandlers() {
    return {[this](Base::ByteBuffer frame) { client_->OnFrame(std::move(frame)); },
            [this](Base::ByteBuffer jpeg) { client_->OnStill(std::move(jpeg), result::kSuccess); },
            [this] { OnFirstPicture(); }, [this] { Lose(); }};
}

void LiveCamera::SetControls() {
    if (source_->Has(VideoControl::kZoom)) {
        (void)source_->Set(VideoControl::kZoom, settings_.zoomStep);
    }
    if (source_->Has(VideoControl::kWhiteBalance)) {
        (void)source_->Set(VideoControl::kWhiteBalance, static_cast<int>(settings_.whiteBalance));
    }
}

StreamSettings LiveCamera::LeftToPictures() const {
    StreamSettings left = settings_;
    if (source_->Has(VideoControl::kZoom)) left.zoomStep = 0;
    if (source_->Has(VideoControl::kWhiteBalance)) {
        left.whiteBalance = CameraWhiteBalance::kAuto;
    }
    return left;
}

void LiveCamera::WatchPictures() {
    seenPictures_ = intake_->PictureCount();
    silentLooks_ = 0;
    LookAgain();
}

void LiveCamera::LookAgain() {
    Cancel(watchTimer_);
    watchTimer_ = EventLoop::Current().StartTimer(Base::EventClass::kSystem, kBetweenLooks, [this] {
        watchTimer_ = 0;
        if (intake_->PictureCount() != seenPictures_) {
            WatchPictures();
        } else if (++silentLooks_ == kMostSilentLooks) {
            Lose();
        } else {
            LookAgain();
        }
    });
}

void LiveCamera::OnSourceChanged() {
    if (!source_->IsThere()) {
        Lose();
    } else if (!isPresent_ && isSought_) {
        Try();
    } else if (!isPresent_) {
        Return();  // until the next power-on finds out otherwise
    }
}

void LiveCamera::OnFirstPicture() {
    if (!isPresent_) Return();
}

void LiveCamera::Lose() {
    StopSource();
    if (isSought_) TryLater();
    if (!std::exchange(isPresent_, false)) return;
    if (presenceChanged_) presenceChanged_(false);
}

void LiveCamera::Return() {
    Cancel(tryTimer_);
    Cancel(watchTimer_);
    isPresent_ = true;
    if (presenceChanged_) presenceChanged_(true);
}

void LiveCamera::Try() {
    assert(!isPresent_);
    Cancel(tryTimer_);
    if (source_->IsThere() && Succeeded(StartSource())) {
        WatchPictures();
    } else {
        TryLater();
    }
}

void LiveCamera::TryLater() {
    Cancel(tryTimer_);
    tryTimer_ = EventLoop::Current().StartTimer(Base::EventClass::kSystem, kBetweenTries, [this] {
        tryTimer_ = 0;
        if (isSought_ && !isPresent_) Try();
    });
}

void LiveCamera::Cancel(EventLoop::TimerId& timer) {
    EventLoop::Current().CancelTimer(std::exchange(timer, 0));
}

}  // namespace Osp::Media
