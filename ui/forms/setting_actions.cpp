// What the controls of the settings show and do.
//
// A flag that is kept between runs is a key whose presence counts. Writing one is saved at once;
// removing the sounds' and the card's is deliberately left to the end of the run, removing tokens
// is not: whoever signs out wants it to be done.
#include <memory>

#include <osp/ui/controls/message_box.h>

#include "app/model/action_ids.h"
#include "app/model/photo_folders.h"
#include "app/model/registry_keys.h"
#include "app/model/request_ids.h"
#include "share/sns_share_form.h"
#include "ui/forms/setting_form.h"
#include "ui/presenting.h"

namespace Kivo {

using Osp::Base::String;
using Osp::Graphics::Dimension;

namespace {

constexpr int kCardMessageMs = 3000;
constexpr int kCardLookMs = 1000;
constexpr Osp::Graphics::Color kChosenTextColor{255, 255, 255, 255};
constexpr Osp::Graphics::Color kTextColor{64, 64, 64, 255};

String TextOf(const Dimension& size) {
    String text;
    return text.Append(size.width).Append("x").Append(size.height);
}

void AskForCard() {
    Osp::Ui::Controls::MessageBox box;
    const result r = box.Construct("", "Please insert MicroSD card.",
                                   Osp::Ui::Controls::MessageBoxStyle::kNone, kCardMessageMs);
    if (Osp::Succeeded(r)) (void)box.ShowAndWait();
}

}  // namespace

void SettingForm::OnActionPerformed(const Osp::Ui::Control&, int actionId) {
    switch (actionId) {
        case kActionReturn:
            (void)ReturnToMainForm(true);
            break;
        case kActionSound:
            ToggleSound();
            break;
        case kActionMemory:
            ToggleMemory();
            break;
        case kActionFacebook:
            ToggleFacebook();
            break;
        case kActionTwitter:
            ToggleTwitter();
            break;
        default:
            ChooseResolution(static_cast<std::size_t>(actionId - kActionFirstResolution));
            break;
    }
}

void SettingForm::Refresh() {
    ShowResolutions();
    SetToggle(*sound_, setting_->IsEffectSoundEnabled() && setting_->IsShutterSoundEnabled());
    SetToggle(*twitter_, !shareForm_->GetTwToken().IsEmpty());
    SetToggle(*facebook_, !shareForm_->GetFbToken().IsEmpty());
    ShowMemory();
    RequestRedraw();
    (void)cardTimer_.Cancel();
    (void)cardTimer_.Start(kCardLookMs);
}

void SettingForm::ShowMemory() {
    isCardInUse_ = StorageInUse(*setting_) == StorageType::kMemoryCard;
    SetToggle(*memory_, isCardInUse_);
}

void SettingForm::OnTimerExpired(Osp::Base::Runtime::Timer&) {
    const bool isCardInUse = StorageInUse(*setting_) == StorageType::kMemoryCard;
    if (isCardInUse != isCardInUse_) ShowMemory();
    (void)cardTimer_.Start(kCardLookMs);
}

void SettingForm::ShowResolutions() {
    const std::unique_ptr<std::vector<Dimension>> sizes(setting_->GetSupportResolutionListN());
    const Dimension chosen = setting_->GetCaptureDimension();
    // A camera that offers more than there are buttons has its first on them.
    for (std::size_t i = 0; i < sizes->size() && i < kMostResolutions; ++i) {
        Button& button = *resolutions_[i];
        (void)button.SetShowState(true);
        button.SetText(TextOf((*sizes)[i]));
        ShowResolution(button, (*sizes)[i] == chosen, kResolutionDown);
    }
}

void SettingForm::ShowResolution(Button& button, bool isChosen, Picture pressed) {
    button.SetTextColor(isChosen ? kChosenTextColor : kTextColor);
    button.SetNormalBitmap(pictures_[isChosen ? kResolutionChosen : kResolution]);
    button.SetPressedBitmap(pictures_[pressed]);
}

void SettingForm::ChooseResolution(std::size_t index) {
    // The front camera's photographs are its preview's size.
    if (setting_->GetCameraSelection() == Osp::Media::CameraSelection::kSecondary) return;
    const std::unique_ptr<std::vector<Dimension>> sizes(setting_->GetSupportResolutionListN());
    if (index >= sizes->size() || index >= kMostResolutions) return;
    const auto [width, height] = (*sizes)[index];
    setting_->SetCaptureDimension(width, height);
    Keep(kCaptureWidthKey, width);
    Keep(kCaptureHeightKey, height);
    for (std::size_t i = 0; i < sizes->size() && i < kMostResolutions; ++i) {
        const bool isChosen = i == index;
        ShowResolution(*resolutions_[i], isChosen, isChosen ? kResolutionChosen : kResolutionDown);
        (void)Present(*resolutions_[i]);
    }
}

void SettingForm::SetToggle(Button& toggle, bool isOn) {
    toggle.SetNormalBitmap(pictures_[isOn ? kOn : kOff]);
    toggle.SetPressedBitmap(pictures_[isOn ? kOnDown : kOffDown]);
}

void SettingForm::Toggle(Button& toggle, bool isOn) {
    SetToggle(toggle, isOn);
    (void)Present(toggle);
}

// One toggle for both sounds.
void SettingForm::ToggleSound() {
    const bool turnOn = !setting_->IsEffectSoundEnabled() || !setting_->IsShutterSoundEnabled();
    setting_->EnableEffectSound(turnOn);
    setting_->EnableShutterSound(turnOn);
    if (turnOn) {
        (void)Registry().Remove(kEffectSoundOffKey);
        (void)Registry().Remove(kShutterSoundOffKey);
    } else {
        (void)Registry().Add(kEffectSoundOffKey, 1);
        (void)Registry().Add(kShutterSoundOffKey, 1);
        (void)Registry().Save();
    }
    Toggle(*sound_, turnOn);
}

void SettingForm::ToggleMemory() {
    if (!IsCardThere()) return AskForCard();
    const bool turnOn = setting_->GetStorageType() != StorageType::kMemoryCard;
    setting_->SetStorageType(turnOn ? StorageType::kMemoryCard : StorageType::kPhone);
    if (turnOn) {
        (void)Registry().Add(kExternalMemoryKey, 1);
        (void)Registry().Save();
    } else {
        (void)Registry().Remove(kExternalMemoryKey);
    }
    ShowMemory();
    (void)Present(*memory_);
}

void SettingForm::ToggleFacebook() {
    if (shareForm_->GetFbToken().IsEmpty()) return SignIn(kRequestFacebookSignIn);
    (void)Registry().Remove(kFacebookTokenKey);
    (void)Registry().Save();
    shareForm_->ResetFbToken();
    Toggle(*facebook_, false);
}

void SettingForm::ToggleTwitter() {
    if (shareForm_->GetTwToken().IsEmpty()) return SignIn(kRequestTwitterSignIn);
    (void)Registry().Remove(kTwitterTokenKey);
    (void)Registry().Remove(kTwitterSecretKey);
    (void)Registry().Save();
    shareForm_->ResetTwToken();
    Toggle(*twitter_, false);
}

void SettingForm::SignIn(long request) {
    if (Osp::Failed(frame_->SetCurrentForm(shareForm_))) return;
    (void)shareForm_->SendUserEvent(request, nullptr);
    (void)shareForm_->Show();
    (void)shareForm_->Draw();
}

}  // namespace Kivo
