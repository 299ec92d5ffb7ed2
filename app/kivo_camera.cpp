#include "app/kivo_camera.h"

#include <memory>

#include <osp/system/power_manager.h>

#include "app/model/request_ids.h"
#include "capture/main_form.h"

namespace Kivo {

Osp::App::Application* KIVOCamera::CreateInstance() {
    return new KIVOCamera;
}

bool KIVOCamera::OnAppInitializing(Osp::App::AppRegistry&) {
    Osp::App::AppFrame* const appFrame = GetAppFrame();
    Osp::Ui::Controls::Frame* const frame = appFrame ? appFrame->GetFrame() : nullptr;
    if (frame == nullptr) return false;
    frame_ = frame;

    auto mainForm = std::make_unique<MainForm>();
    if (Osp::Failed(mainForm->Construct(frame)) || Osp::Failed(frame->AddControl(mainForm.get()))) {
        return false;
    }
    mainForm_ = mainForm.release();
    (void)frame->SetCurrentForm(mainForm_);
    (void)Osp::System::PowerManager::SetScreenEventListener(this);
    return true;
}

bool KIVOCamera::OnAppTerminating(Osp::App::AppRegistry&, bool) {
    return true;
}

void KIVOCamera::OnForeground() {
    if (frame_->GetCurrentForm() == mainForm_) {
        (void)mainForm_->SendUserEvent(kRequestForeground, nullptr);
    }
}

void KIVOCamera::OnBackground() {
    if (Osp::Ui::Controls::Form* const current = frame_->GetCurrentForm()) {
        (void)current->SendUserEvent(kRequestBackground, nullptr);
    }
}

}  // namespace Kivo
