// What a photograph of several frames keeps between them, and what ends it.
//
// The shot counter, the accumulation, the MIX blend and the pictures of both on the screen belong
// to one series. A series ends with its photograph; with going to the background, unless it is a
// double exposure that waits for its second press; with whatever leaves the camera screen or
// changes camera or type, so that no later photograph is made of its bytes; with a frame that
// cannot be begun; and with the fifth in a row that is lost. In between the controls are disabled
// while a frame is on its way, and whoever loses that frame enables them again: nothing else would.
#include "app/model/action_ids.h"
#include "capture/main_form.h"
#include "ui/overlay.h"

namespace Kivo {

namespace {

constexpr int kMostLostFrames = 5;

// What a running capture takes away from the user.
constexpr int kCaptureControls[] = {
    kActionCapture, kActionCameraSelection, kActionFlash, kActionWhiteBalance,
    kActionHdr,     kActionCameraType,      kActionAlbum, kActionSettings};

}  // namespace

void MainForm::EnableControls(bool enable) {
    for (const int id : kCaptureControls) (void)overlay_->SetButtonEnabled(id, enable);
    overlay_->EnableKeys(enable);
}

void MainForm::FollowUp(int actionDelayMs, int quadDelayMs) {
    const CameraType type = setting_->GetCameraType();
    const bool isInSeries = shotCounter_ >= 1 && shotCounter_ <= 3;
    if (isInSeries && (type == CameraType::kAction || type == CameraType::kQuad)) {
        ShowShotCounter();
        (void)timer_->Start(type == CameraType::kAction ? actionDelayMs : quadDelayMs);
    } else {
        Settle();
    }
}

// After the first frame of MIX the picture is that of the press that is awaited.
void MainForm::ShowShotCounter() {
    const bool isMix = setting_->GetCameraType() == CameraType::kMix;
    overlay_->SetCaptureButton(shotCounter_ == 0 ? -1 : isMix ? 0 : shotCounter_);
}

void MainForm::Settle() {
    ShowShotCounter();
    const bool waitsForSecondPress = WaitsForSecondPress();
    EnableControls(!waitsForSecondPress);
    if (waitsForSecondPress) (void)overlay_->SetButtonEnabled(kActionCapture, true);
}

bool MainForm::WaitsForSecondPress() const {
    return setting_->GetCameraType() == CameraType::kMix && shotCounter_ > 0;
}

void MainForm::LoseFrame() {
    overlay_->SetFocused(false);
    if (shotCounter_ > 0 && ++lostFrames_ >= kMostLostFrames) EndSeries();
}

// A frame that cannot even be begun: no timer will ask for it again, and a series that went on with
// a later press would be of two scenes. A double exposure is meant to be, and waits.
void MainForm::RefuseFrame() {
    LoseFrame();
    if (!WaitsForSecondPress()) EndSeries();
    ShowShotCounter();
    EnableControls(true);
}

void MainForm::EndSeries() {
    if (shotCounter_ > 0) accumulation_.Clear();
    shotCounter_ = 0;
    lostFrames_ = 0;
    setting_->EnablePreview(false);
}

void MainForm::AbandonCountdown() {
    if (frontCountdown_ < 0) return;
    frontCountdown_ = -1;
    if (setting_->GetFlashState() == FlashState::kOn) overlay_->ShowScreen();
    RefuseFrame();
}

void MainForm::AbandonCapture() {
    if (timer_) (void)timer_->Cancel();
    focusGuard_ = false;
    frontCountdown_ = -1;
    if (!WaitsForSecondPress()) EndSeries();
    if (overlay_ == nullptr) return;
    overlay_->SetFocused(false);
    Settle();
}

}  // namespace Kivo
