#include "ui/forms/option_form.h"

#include <osp/base/string.h>
#include <osp/ui/controls/button.h>

#include "app/model/action_ids.h"
#include "app/model/registry_keys.h"
#include "app/model/request_ids.h"
#include "ui/leaving.h"
#include "ui/return_button.h"

namespace Kivo {

namespace {

constexpr const char* kSounds[] = {"/Res/snd_change_camera.wav", "/Res/snd_change_effect.wav"};
constexpr Osp::Graphics::Point kArrowPlace{378, 268};

}  // namespace

result OptionForm::Construct(Osp::Ui::Controls::Frame* frame, Osp::Ui::Controls::Form* mainForm,
                             CameraSetting* setting) {
    frame_ = frame;
    mainForm_ = mainForm;
    setting_ = setting;
    result r = Form::Construct(0);
    if (Osp::Failed(r)) return r;
    Osp::Media::Image decoder;
    r = decoder.Construct();
    if (Osp::Failed(r)) return r;
    r = pictures_.Load(decoder);
    return Osp::Failed(r) ? r : OpenSounds();
}

result OptionForm::OpenSounds() {
    static_assert(std::size(kSounds) == std::tuple_size_v<decltype(players_)>);
    for (std::size_t i = 0; i < players_.size(); ++i) {
        players_[i] = std::make_unique<Osp::Media::Player>();
        result r = players_[i]->Construct(*this);
        if (Osp::Succeeded(r)) r = players_[i]->SetLooping(false);
        if (Osp::Succeeded(r)) r = players_[i]->OpenFile(kSounds[i]);
        if (Osp::Failed(r)) return r;
    }
    return result::kSuccess;
}

result OptionForm::OnInitializing() {
    result r = SetOrientation(Osp::Ui::Orientation::kLandscape);
    if (Osp::Failed(r)) return r;
    AddKeyEventListener(*this);
    r = AddReturnButton(*this, *this, pictures_.Return(), pictures_.ReturnPressed());
    if (Osp::Failed(r)) return r;
    AddTouchEventListener(*this);
    timer_ = std::make_unique<Osp::Base::Runtime::Timer>();
    return timer_->Construct(*this);
}

result OptionForm::OnTerminating() {
    players_ = {};
    timer_.reset();
    return result::kSuccess;
}

void OptionForm::OnActionPerformed(const Osp::Ui::Control&, int actionId) {
    if (actionId == kActionReturn) (void)ReturnToMainForm(true);
}

// The key is the return button.
void OptionForm::OnKeyPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode keyCode) {
    if (keyCode == Osp::Ui::KeyCode::kBack) (void)ReturnToMainForm(true);
}

bool OptionForm::OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) {
    Form::OnUserEventReceivedN(requestId, args);
    if (requestId != kRequestBecameCurrent) return false;
    Reset();
    RequestRedraw();
    return true;
}

result OptionForm::ReturnToMainForm(bool save) {
    if (!save) return LeaveForMainForm(*frame_, *mainForm_, *this, std::nullopt);
    Osp::Base::String type;
    type.Append(static_cast<int>(setting_->GetCameraType()));
    Keep(kCameraTypeKey, type);
    return LeaveForMainForm(*frame_, *mainForm_, *this, kRequestReturnFromOptions);
}

result OptionForm::OnDraw() {
    const std::unique_ptr<Osp::Graphics::Canvas> canvas(GetCanvasN());
    if (!canvas) return result::kSuccess;
    result r = canvas->Clear();
    if (Osp::Failed(r)) return r;
    r = canvas->DrawBitmap(Osp::Graphics::Point{}, pictures_.Ground());
    if (Osp::Failed(r)) return r;
    // Below the cameras, whose pictures are clear there: so it is never covered for long.
    r = canvas->DrawBitmap(kArrowPlace, pictures_.Arrow());
    if (Osp::Failed(r)) return r;
    r = DrawCameras(*canvas);
    return Osp::Failed(r) ? r : DrawEffects(*canvas);
}

result OptionForm::DrawCameras(Osp::Graphics::Canvas& canvas) {
    for (const CarouselSlot& slot : SlotsOf(kCameraCarousel, StepOf(Row::kCameras), toRight_)) {
        auto& picture = pictures_.Camera(setting_->GetCameraType(), slot.offset);
        const result r = picture.Draw(canvas, slot.bounds);
        if (Osp::Failed(r)) return r;
    }
    return result::kSuccess;
}

result OptionForm::DrawEffects(Osp::Graphics::Canvas& canvas) {
    for (const CarouselSlot& slot : SlotsOf(kEffectCarousel, StepOf(Row::kEffects), toRight_)) {
        auto& picture =
            pictures_.Effect(setting_->GetCameraType(), setting_->GetPhotoEffect(), slot.offset);
        const result r = picture.Draw(canvas, slot.bounds);
        if (Osp::Failed(r)) return r;
    }
    return result::kSuccess;
}

}  // namespace Kivo
