// The camera form's beginning and end.
//
// In two steps: Construct makes what needs nobody (settings, splash, timer), OnInitializing what
// needs the form in its frame (camera, overlay, keys). Either may fail, and what has been made by
// then goes with the form. The splash label is the form's own until the form has it as a child.
#include "capture/main_form.h"

#include <osp/base/integer.h>
#include <osp/system/system_info.h>

#include "app/model/photo_folders.h"
#include "app/model/registry_keys.h"
#include "share/sns_share_form.h"
#include "ui/load_picture.h"
#include "ui/overlay.h"

namespace Kivo {

using Osp::Base::String;

namespace {

constexpr const char* kSplashResources[] = {
    "/Res/splash_kivo.png",  "/Res/splash_dslr.png", "/Res/splash_action.png",
    "/Res/splash_quad.png",  "/Res/splash_mix.png",  "/Res/splash_ts.png",
    "/Res/splash_album.png",
};

}  // namespace

MainForm::MainForm() = default;
MainForm::~MainForm() = default;

result MainForm::Construct(Osp::Ui::Controls::Frame* frame) {
    frame_ = frame;
    result r = Form::Construct(0);
    if (Osp::Failed(r)) return r;
    setting_ = std::make_unique<CameraSetting>();
    ReadCameraType();
    r = AddShareForm();
    if (Osp::Failed(r)) return r;
    r = LoadSplash();
    if (Osp::Failed(r)) return r;
    timer_ = std::make_unique<Osp::Base::Runtime::Timer>();
    return timer_->Construct(*this);
}

void MainForm::ReadCameraType() {
    String text;
    int value = 0;
    if (Osp::Failed(Registry().Get(kCameraTypeKey, text))) return;
    if (Osp::Failed(Osp::Base::Integer::Parse(text, value))) return;
    setting_->SetCameraType(static_cast<CameraType>(value & 0xFF));
}

result MainForm::AddShareForm() {
    auto form = std::make_unique<SnsShareForm>();
    result r = form->Construct(frame_, this);
    if (Osp::Failed(r)) return r;
    r = frame_->AddControl(form.get());
    if (Osp::Succeeded(r)) shareForm_ = form.release();
    return r;
}

result MainForm::LoadSplash() {
    static_assert(std::size(kSplashResources) == kSplashCount);
    auto label = std::make_unique<Osp::Ui::Controls::Label>();
    result r = label->Construct({0, 0, 800, 480}, "");
    if (Osp::Failed(r)) return r;
    image_ = std::make_unique<Osp::Media::Image>();
    r = image_->Construct();
    if (Osp::Failed(r)) return r;
    for (int i = 0; i < kSplashCount; ++i) {
        auto& bitmap = splashBitmaps_[static_cast<std::size_t>(i)];
        r = LoadPicture(*image_, kSplashResources[i], bitmap);
        if (Osp::Failed(r)) return r;
    }
    splash_ = label.release();
    ownedSplash_.reset(splash_);
    splash_->SetBackgroundBitmap(splashBitmaps_[static_cast<std::size_t>(SplashOfCameraType())]);
    return result::kSuccess;
}

result MainForm::OnInitializing() {
    const result r = SetOrientation(Osp::Ui::Orientation::kLandscape);
    if (Osp::Failed(r)) return r;
    int cameraCount = 0;
    if (Osp::Failed(Osp::System::SystemInfo::GetValue("CameraCount", cameraCount)) ||
        cameraCount == 0) {
        return result::kFailure;
    }
    if (cameraCount == 1) setting_->EnableSecondary(false);
    RestoreSettings();
    return InitScreen();
}

void MainForm::RestoreSettings() {
    int width = 0;
    int height = 0;
    if (Osp::Succeeded(Registry().Get(kCaptureWidthKey, width)) &&
        Osp::Succeeded(Registry().Get(kCaptureHeightKey, height))) {
        setting_->SetCaptureDimension(width, height);
    }
    // The presence of either key turns its sound off; the value is deliberately not looked at.
    if (HasKey(kEffectSoundOffKey)) setting_->EnableEffectSound(false);
    if (HasKey(kShutterSoundOffKey)) setting_->EnableShutterSound(false);
    RestoreStorage();
}

void MainForm::RestoreStorage() {
    if (!HasKey(kExternalMemoryKey)) return;
    if (IsCardThere()) {
        setting_->SetStorageType(StorageType::kMemoryCard);
    } else {
        // Deliberately not followed by Save.
        (void)Registry().Remove(kExternalMemoryKey);
    }
}

result MainForm::InitScreen() {
    result r = InitCamera(setting_->GetCameraSelection());
    if (Osp::Failed(r)) return r;
    r = InitOverlayPanel(GetOrientation());
    if (Osp::Failed(r)) return r;
    r = AddControl(splash_);
    if (Osp::Failed(r)) return r;
    (void)ownedSplash_.release();
    AddKeyEventListener(*this);
    return result::kSuccess;
}

result MainForm::OnTerminating() {
    AbandonCapture();
    if (running_) (void)Stop();
    camera_.reset();
    splashBitmaps_ = {};
    timer_.reset();
    image_.reset();
    return result::kSuccess;
}

}  // namespace Kivo
