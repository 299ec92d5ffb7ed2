// The camera form's beginning and end.
//
// In two steps: Construct makes what needs nobody (settings, splash, timer), OnInitializing what
// needs the form in its frame (camera, overlay, keys). Either may fail, and what has been made by
// then goes with the form. The splash label is the form's own until the form has it as a child.
#include "capture/main_form.h"

#include <osp/app/application.h>
#include <osp/base/integer.h>
#include <osp/io/directory.h>
#include <osp/system/system_info.h>

#include "app/model/photo_folders.h"
#include "app/model/registry_keys.h"
#include "ui/overlay.h"

namespace Kivo {

using Osp::App::AppRegistry;
using Osp::Base::String;

namespace {

constexpr const char* kSplashResources[] = {
    "/Res/splash_kivo.png",  "/Res/splash_dslr.png", "/Res/splash_action.png",
    "/Res/splash_quad.png",  "/Res/splash_mix.png",  "/Res/splash_ts.png",
    "/Res/splash_album.png",
};

AppRegistry& Registry() {
    return *Osp::App::Application::GetInstance()->GetAppRegistry();
}

bool HasKey(const String& key) {
    int ignored = 0;
    return Registry().Get(key, ignored) != result::kKeyNotFound;
}

}  // namespace

MainForm::MainForm() = default;
MainForm::~MainForm() = default;

result MainForm::Construct(Osp::Ui::Controls::Frame* frame) {
    frame_ = frame;
    result r = Form::Construct(0);
    if (Osp::Failed(r)) return r;
    setting_ = std::make_unique<CameraSetting>();
    ReadCameraType();
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

result MainForm::LoadSplash() {
    static_assert(std::size(kSplashResources) == kSplashCount);
    auto label = std::make_unique<Osp::Ui::Controls::Label>();
    result r = label->Construct({0, 0, 800, 480}, "");
    if (Osp::Failed(r)) return r;
    image_ = std::make_unique<Osp::Media::Image>();
    r = image_->Construct();
    if (Osp::Failed(r)) return r;
    for (int i = 0; i < kSplashCount; ++i) {
        const std::unique_ptr<Osp::Graphics::Bitmap> bitmap(
            image_->DecodeN(kSplashResources[i], Osp::Media::kDecodedPixelFormatArgb));
        if (!bitmap) return image_->GetLastResult();
        splashBitmaps_[static_cast<std::size_t>(i)] = *bitmap;
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
    if (Osp::Io::Directory::Exists(kCardFolder)) {
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
