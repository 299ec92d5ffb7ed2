#include <algorithm>

#include <osp/app/application.h>

#include "app/model/request_ids.h"
#include "capture/main_form.h"
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
        default:
            return false;
    }
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
