// The camera form of the application that a phone runs; its methods are the application's own and
// cannot be called from here, but its settings can.
#pragma once

#include "app/model/request_ids.h"
#include "capture/main_form.h"
#include "osp/ui/screen.h"

namespace Kivo::Testing {

/// On the loop thread, while the camera form is the current one.
inline CameraSetting& CurrentSettings() {
    return *static_cast<MainForm*>(Osp::Ui::Screen::Current().GetCurrentForm())->GetSetting();
}

/// What going to a chooser, choosing and coming back does.
inline void Choose(CameraType type, PhotoEffect effect) {
    auto* const form = Osp::Ui::Screen::Current().GetCurrentForm();
    (void)form->SendUserEvent(kRequestBackground, nullptr);
    CurrentSettings().SetCameraType(type);
    CurrentSettings().SetPhotoEffect(effect);
    (void)form->SendUserEvent(kRequestForeground, nullptr);
}

}  // namespace Kivo::Testing
