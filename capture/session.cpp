// The camera session: stopped, or started with the preview running and the players open.
//
// Start and Stop lead from one to the other, and running_ says which it is; a preview that fails by
// itself stops the session, and the next press starts it again (EnsurePreview). Every photograph
// costs a power cycle: what the camera loses by it is set again here, in this order, and the zoom
// only where the camera has not kept it. Sizes and formats are chosen while the camera is on and
// shows nothing. Whatever fails on the way leaves a stopped session and has told the user.
#include <algorithm>
#include <vector>

#include <osp/app/application.h>
#include <osp/system/power_manager.h>
#include <osp/ui/controls/message_box.h>

#include "app/model/registry_keys.h"
#include "capture/main_form.h"
#include "ui/overlay.h"

namespace Kivo {

using Osp::Graphics::Dimension;
using Osp::Media::CameraSelection;
using Osp::Media::CameraState;

namespace {

constexpr Dimension kOfferedSizes[] = {{640, 480}, {800, 480}, {1280, 960}, {1600, 960}};
constexpr Dimension kDefaultSize{1280, 960};
constexpr int kBusyMessageMs = 3000;

constexpr const char* kSounds[] = {"/Res/kivo.mp3", "/Res/dslr.mp3", "/Res/others.mp3",
                                   "/Res/snd_change_roll.wav"};

bool IsPreviewSize(const Dimension& size) {
    return (size.width == 640 || size.width == 800) && size.height == 480;
}

void TellThatCameraIsBusy() {
    Osp::Ui::Controls::MessageBox box;
    const result r =
        box.Construct("", "Camera is already being\r\nused. Close application,\r\nthen reopen it.",
                      Osp::Ui::Controls::MessageBoxStyle::kNone, kBusyMessageMs);
    if (Osp::Succeeded(r)) (void)box.ShowAndWait();
}

}  // namespace

result MainForm::InitCamera(CameraSelection selection) {
    camera_ = std::make_unique<Osp::Media::Camera>();
    const result r = camera_->Construct(*this, selection);
    if (Osp::Failed(r)) {
        camera_.reset();
        return r;
    }
    setting_->SetFlashState(FlashState::kOff);
    return result::kSuccess;
}

result MainForm::InitOverlayPanel(Osp::Ui::Orientation) {
    panelWidth_ = 800;
    panelHeight_ = 480;
    auto overlay = std::make_unique<Overlay>();
    result r = overlay->Construct(this, setting_.get(), {0, 0, panelWidth_, panelHeight_});
    if (Osp::Failed(r)) return r;
    if (!setting_->IsSecondaryEnabled()) {
        r = overlay->SetButtonVisible(kCameraSelectionVisibility, false);
        if (Osp::Failed(r)) return r;
    }
    (void)overlay->SetShowState(false);
    r = AddControl(overlay.get());
    if (Osp::Succeeded(r)) overlay_ = overlay.release();
    return r;
}

result MainForm::Start(bool restoreZoom) {
    isFirstFrameShown_ = false;
    InitSound();
    const result r = StartPreview();
    if (Osp::Failed(r)) {
        if (camera_ && camera_->IsPoweredOn()) (void)Stop();
        TellThatCameraIsBusy();
        return r;
    }
    if (restoreZoom && IsPrimary()) RestoreZoom();
    if (accumulation_.GetCapacity() == 0) {
        const auto [width, height] = setting_->GetMaxSupportResolution();
        (void)accumulation_.Construct(width * height * Effects::kBytesPerPixel);
    }
    running_ = true;
    return result::kSuccess;
}

result MainForm::StartPreview() {
    if (!camera_) return result::kInvalidState;
    result r = result::kSuccess;
    if (!camera_->IsPoweredOn()) r = camera_->PowerOn();
    if (Osp::Failed(r)) return r;
    if (camera_->GetState() == CameraState::kInitial) {
        r = ChoosePreviewSize();
        if (Osp::Failed(r)) return r;
        r = camera_->SetPreviewFormat(Osp::Media::PixelFormat::kYuv420Planar);
        if (Osp::Failed(r)) return r;
        if (IsPrimary()) r = ChooseCaptureSize();
        if (Osp::Failed(r)) return r;
    }
    if (IsPrimary()) r = camera_->SetFlash(setting_->GetFlashState() != FlashState::kOff);
    if (Osp::Failed(r)) return r;
    setting_->SetWhiteBalance(camera_->GetWhiteBalance());
    overlay_->UpdateOverlay();
    r = camera_->StartPreview(nullptr, true);
    if (Osp::Failed(r)) return r;
    return Osp::System::PowerManager::KeepScreenOnState(true, false);
}

result MainForm::ChoosePreviewSize() {
    const std::unique_ptr<std::vector<Dimension>> sizes(
        camera_->GetSupportedPreviewResolutionListN());
    if (!sizes || sizes->empty()) return result::kFailure;
    const auto found = std::find_if(sizes->rbegin(), sizes->rend(), IsPreviewSize);
    const Dimension size = found == sizes->rend() ? sizes->front() : *found;
    if (!IsPrimary()) setting_->SetCaptureDimension(size.width, size.height);
    return camera_->SetPreviewResolution(size);
}

result MainForm::ChooseCaptureSize() {
    const std::unique_ptr<std::vector<Dimension>> sizes(
        camera_->GetSupportedCaptureResolutionListN());
    if (!sizes) return result::kFailure;
    setting_->ResetSupportResolution();
    Dimension largest;
    for (auto size = sizes->rbegin(); size != sizes->rend(); ++size) {
        if (!std::ranges::count(kOfferedSizes, *size)) continue;
        setting_->AddSupportResolution(*size);
        largest = {std::max(largest.width, size->width), std::max(largest.height, size->height)};
    }

    Dimension stored;
    const bool isStored = Osp::Succeeded(Registry().Get(kCaptureWidthKey, stored.width)) &&
                          Osp::Succeeded(Registry().Get(kCaptureHeightKey, stored.height));
    if (!isStored || stored.width > largest.width || stored.height > largest.height) stored = {};
    Dimension chosen = stored;
    if (chosen.width == 0 || chosen.height == 0) chosen = kDefaultSize;
    // A damaged registry can hold a size that no camera takes.
    if (!std::ranges::count(*sizes, chosen)) chosen = kDefaultSize;
    setting_->SetCaptureDimension(chosen.width, chosen.height);
    const result r = camera_->SetCaptureResolution(chosen);
    return Osp::Failed(r) ? r : camera_->SetCaptureFormat(Osp::Media::PixelFormat::kJpeg);
}

// From 1x, where a power cycle without a picture leaves it.
void MainForm::RestoreZoom() {
    appliedZoom_ = 0;
    ApplyZoom();
}

result MainForm::Stop() {
    if (!camera_) return result::kInvalidState;
    if (camera_->GetState() == CameraState::kPreviewing) (void)camera_->StopPreview();
    isFirstFrameShown_ = false;
    const result r = camera_->PowerOff();
    if (Osp::Succeeded(r)) running_ = false;
    (void)Osp::System::PowerManager::KeepScreenOnState(false, false);
    DeinitSound();
    return r;
}

result MainForm::DeinitCamera() {
    const result r = Stop();
    if (Osp::Succeeded(r)) camera_.reset();
    return r;
}

void MainForm::InitSound() {
    static_assert(std::size(kSounds) == kPlayerCount);
    for (std::size_t i = 0; i < players_.size(); ++i) {
        // One that does not open is silent when it is played.
        players_[i] = std::make_unique<Osp::Media::Player>();
        result r = players_[i]->Construct(*this);
        if (Osp::Succeeded(r)) r = players_[i]->SetLooping(false);
        if (Osp::Succeeded(r)) (void)players_[i]->OpenFile(kSounds[i]);
    }
}

void MainForm::DeinitSound() {
    players_ = {};
}

// Whether the session runs; if not, the application is about to end.
bool MainForm::StartOrEnd(bool restoreZoom) {
    if (Osp::Succeeded(Start(restoreZoom))) return true;
    (void)Osp::App::Application::GetInstance()->Terminate();
    return false;
}

bool MainForm::IsPrimary() const {
    return setting_->GetCameraSelection() == CameraSelection::kPrimary;
}

}  // namespace Kivo
