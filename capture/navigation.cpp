// The camera screen and the forms that take its place.
//
// Whoever leaves the screen ends what the screen keeps: a series under way, the controls that it
// disabled, the session. The form that comes back asks for a splash and then wakes the camera; in
// between the splash covers what the overlay still shows. Forms go by themselves, so those that are
// needed again are held weakly.
#include <memory>

#include "album/album_form.h"
#include "app/model/request_ids.h"
#include "capture/main_form.h"
#include "share/sns_share_form.h"
#include "ui/forms/option_form.h"
#include "ui/forms/setting_form.h"
#include "ui/overlay.h"
#include "ui/presenting.h"

namespace Kivo {

bool MainForm::OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) {
    // No request to this form has arguments worth reading.
    Form::OnUserEventReceivedN(requestId, args);
    switch (requestId) {
        case kRequestForeground:
            WakeCamera();
            return true;
        case kRequestBackground:
            LetGoOfCamera();
            return true;
        case kRequestReturnFromAlbum:
            ShowSplash(kAlbumSplash);
            return true;
        case kRequestReturnFromOptions:
            ShowSplash(SplashOfCameraType());
            return true;
        case kRequestReturnToSettings:
            (void)GotoSettingForm(false);
            return true;
        case kRequestReturnToAlbum:
            (void)GotoAlbumForm(false);
            return true;
        case kRequestFacebookShare:
        case kRequestTwitterPin:
        case kRequestShared:
        case kRequestShareCancelled:
        case kRequestFacebookFailed:
        case kRequestTwitterFailed:
        case kRequestOtherShareFailed:
            TellAlbum(requestId);
            return true;
        default:
            return false;
    }
}

result MainForm::GotoOptionForm() {
    result r = LeaveScreen();
    if (Osp::Failed(r)) return r;
    auto form = std::make_unique<OptionForm>();
    r = form->Construct(frame_, this, setting_.get());
    if (Osp::Failed(r)) return r;
    r = frame_->AddControl(form.get());
    return Osp::Failed(r) ? r : OpenForm(*form.release());
}

result MainForm::GotoSettingForm(bool create) {
    if (create) {
        const result r = CreateSettingForm();
        if (Osp::Failed(r)) return r;
    }
    SettingForm* const form = settingForm_.Get();
    return form == nullptr ? result::kObjectNotFound : OpenForm(*form);
}

result MainForm::CreateSettingForm() {
    result r = LeaveScreen();
    if (Osp::Failed(r)) return r;
    auto form = std::make_unique<SettingForm>();
    r = form->Construct(frame_, this, shareForm_, setting_.get());
    if (Osp::Failed(r)) return r;
    r = frame_->AddControl(form.get());
    if (Osp::Failed(r)) return r;
    settingForm_ = Osp::Ui::WeakControl<SettingForm>(*form.release());
    return result::kSuccess;
}

result MainForm::GotoAlbumForm(bool create) {
    if (create) {
        const result r = CreateAlbumForm();
        if (Osp::Failed(r)) return r;
    }
    AlbumForm* const form = albumForm_.Get();
    return form == nullptr ? result::kObjectNotFound : OpenForm(*form);
}

result MainForm::CreateAlbumForm() {
    result r = LeaveScreen();
    if (Osp::Failed(r)) return r;
    auto form = std::make_unique<AlbumForm>();
    r = form->Construct(frame_, this, shareForm_, setting_.get());
    if (Osp::Failed(r)) return r;
    r = frame_->AddControl(form.get());
    if (Osp::Failed(r)) return r;
    albumForm_ = Osp::Ui::WeakControl<AlbumForm>(*form.release());
    return albumForm_.Get()->SendUserEvent(kRequestAlbumCreated, nullptr);
}

void MainForm::TellAlbum(long requestId) {
    AlbumForm* const form = albumForm_.Get();
    if (form != nullptr) (void)form->SendUserEvent(requestId, nullptr);
}

result MainForm::LeaveScreen() {
    EndSeries();
    Settle();
    const result r = running_ ? Stop() : result::kSuccess;
    if (Osp::Succeeded(r)) (void)overlay_->SetShowState(false);
    return r;
}

result MainForm::OpenForm(Osp::Ui::Controls::Form& form) {
    result r = frame_->SetCurrentForm(&form);
    if (Osp::Failed(r)) return r;
    r = frame_->Draw();
    if (Osp::Failed(r)) return r;
    r = frame_->Show();
    return Osp::Failed(r) ? r : form.SendUserEvent(kRequestBecameCurrent, nullptr);
}

// A form that could not be opened leaves the user with the camera.
void MainForm::WakeAfter(result opened) {
    if (Osp::Failed(opened)) WakeCamera();
}

void MainForm::WakeCamera() {
    overlay_->HideScreen();
    ShowShotCounter();
    ShowSplash(SplashOfCameraType());
    // Also of a session that runs already: its next frame takes the cover away.
    isFirstFrameShown_ = false;
    if (!running_) (void)StartOrEnd(true);
}

void MainForm::LetGoOfCamera() {
    AbandonCapture();
    if (running_) (void)Stop();
    (void)overlay_->SetShowState(false);
    (void)splash_->SetShowState(false);
}

void MainForm::ShowSplash(int index) {
    splash_->SetBackgroundBitmap(splashBitmaps_[static_cast<std::size_t>(index)]);
    Reveal(*splash_);
}

int MainForm::SplashOfCameraType() const {
    // A damaged registry can leave any type; those have the first type's picture.
    const int type = static_cast<int>(setting_->GetCameraType());
    return type < kAlbumSplash ? type : 0;
}

}  // namespace Kivo
