#include <osp/app/application.h>

#include "app/model/action_ids.h"
#include "capture/main_form.h"
#include "ui/button_pause.h"
#include "ui/overlay.h"
#include "ui/player_stop.h"

namespace Kivo {

using Osp::Media::CameraSelection;
using Osp::Media::CameraWhiteBalance;

void MainForm::OnActionPerformed(const Osp::Ui::Control&, int actionId) {
    switch (actionId) {
        case kActionCapture:
            PreCapture();
            break;
        case kActionCameraType:
            WakeAfter(GotoOptionForm());
            break;
        case kActionCameraSelection:
            SwapCameras();
            break;
        case kActionAlbum:
            WakeAfter(GotoAlbumForm(true));
            break;
        case kActionCloseHelp:
            overlay_->ShowScreen();
            break;
        case kActionLogo:
            overlay_->ShowCredit();
            break;
        case kActionFlash:
            ToggleFlash();
            break;
        case kActionWhiteBalance:
            NextWhiteBalance();
            break;
        case kActionZoom:
            ApplyZoom();
            break;
        case kActionHdr:
            ToggleHdr();
            break;
        case kActionInfo:
            overlay_->ShowHelp();
            break;
        case kActionSettings:
            WakeAfter(GotoSettingForm(true));
            break;
        case kActionZoomChanging:
        case kActionEffectChanging:
            PlayRollSound();
            break;
        default:
            break;
    }
}

void MainForm::PlayRollSound() {
    const auto& player = players_[kEffectRollPlayer];
    if (!player) return;
    StopIfActive(*player);
    if (setting_->IsEffectSoundEnabled()) (void)player->Play();
}

void MainForm::SwapCameras() {
    if (!camera_) return;
    EndSeries();
    Settle();
    const ButtonPause pause(*overlay_, kActionCameraSelection);
    isSwitchingCamera_ = true;
    (void)DeinitCamera();
    const CameraSelection next =
        IsPrimary() ? CameraSelection::kSecondary : CameraSelection::kPrimary;
    const bool isPrimaryNext = next == CameraSelection::kPrimary;
    if (Osp::Failed(InitCamera(next))) return overlay_->UpdateOverlay();
    // The front camera has neither white balance nor zoom.
    for (const int id : {kActionWhiteBalance, kActionZoom}) {
        (void)overlay_->SetButtonVisible(id, isPrimaryNext);
    }
    setting_->SetCameraSelection(next);
    (void)StartOrEnd(true);
}

void MainForm::ToggleFlash() {
    if (!camera_) return;
    const ButtonPause pause(*overlay_, kActionFlash);
    const bool turnOn = setting_->GetFlashState() == FlashState::kOff;
    // The front camera's flash is the screen, which needs nobody's leave.
    const result r = IsPrimary() ? camera_->SetFlash(turnOn) : result::kSuccess;
    if (Osp::Succeeded(r)) setting_->SetFlashState(turnOn ? FlashState::kOn : FlashState::kOff);
    // The press has shown the new state, which a refusal takes back.
    overlay_->UpdateOverlay();
}

void MainForm::NextWhiteBalance() {
    if (!camera_) return;
    const ButtonPause pause(*overlay_, kActionWhiteBalance);
    const CameraWhiteBalance next = Kivo::NextWhiteBalance(camera_->GetWhiteBalance());
    if (Osp::Succeeded(camera_->SetWhiteBalance(next))) setting_->SetWhiteBalance(next);
    overlay_->UpdateOverlay();
}

void MainForm::ApplyZoom() {
    if (!camera_) return;
    const int level = static_cast<int>(setting_->GetZoomLevel());
    for (; appliedZoom_ > level; --appliedZoom_) (void)camera_->ZoomOut();
    for (; appliedZoom_ < level; ++appliedZoom_) (void)camera_->ZoomIn();
}

void MainForm::ToggleHdr() {
    const ButtonPause pause(*overlay_, kActionHdr);
    setting_->EnableHdr(!setting_->IsHdrEnabled());
    overlay_->UpdateOverlay();
}

}  // namespace Kivo
