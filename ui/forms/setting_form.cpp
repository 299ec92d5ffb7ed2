#include "ui/forms/setting_form.h"

#include <memory>

#include "app/model/action_ids.h"
#include "app/model/registry_keys.h"
#include "app/model/request_ids.h"
#include "ui/leaving.h"
#include "ui/load_picture.h"
#include "ui/return_button.h"

namespace Kivo {

using Osp::Graphics::Point;
using Osp::Graphics::Rectangle;

namespace {

constexpr int kTitleSize = 36;
constexpr int kHintSize = 20;
constexpr int kIconX = 50;
constexpr int kIconSide = 64;
constexpr int kTitleX = 130;
constexpr Point kHintPlace{300, 40};
constexpr Osp::Graphics::Color kTextColor{64, 64, 64, 255};

/// Three columns of two.
constexpr Rectangle ResolutionBounds(int i) {
    return {120 + 195 * (i / 2), 70 + 52 * (i % 2), 190, 44};
}

constexpr Rectangle ToggleBounds(int y) {
    return {550, y, 148, 44};
}

}  // namespace

const std::array<const char*, SettingForm::kPictureCount> SettingForm::kResources{
    "/Res/setting_bg.png",
    "/Res/capture_small.png",
    "/Res/capture_small_down.png",
    "/Res/ico_resolution.png",
    "/Res/btn_resolution_n.png",
    "/Res/btn_resolution_p.png",
    "/Res/btn_resolution_n_down.png",
    "/Res/ico_soundeffect.png",
    "/Res/ico_twitter.png",
    "/Res/ico_facebook.png",
    "/Res/ico_memory.png",
    "/Res/toggle_on.png",
    "/Res/toggle_on_down.png",
    "/Res/toggle_off.png",
    "/Res/toggle_off_down.png",
};

/// What is written beside the controls.
struct SettingForm::RowLayout {
    Picture icon;
    int iconY;
    const char* title;
    int titleY;
};

const std::array<SettingForm::RowLayout, 5> SettingForm::kRows{{
    {kIcoResolution, 16, "Resolution", 30},
    {kIcoSound, 175, "Sound Effect", 189},
    {kIcoMemory, 240, "Use External Memory", 254},
    {kIcoFacebook, 305, "Facebook", 319},
    {kIcoTwitter, 370, "Twitter", 384},
}};

result SettingForm::Construct(Osp::Ui::Controls::Frame* frame, Osp::Ui::Controls::Form* mainForm,
                              SnsShareForm* shareForm, CameraSetting* setting) {
    frame_ = frame;
    mainForm_ = mainForm;
    shareForm_ = shareForm;
    setting_ = setting;
    result r = Form::Construct(0);
    if (Osp::Failed(r)) return r;
    r = LoadPictures();
    if (Osp::Failed(r)) return r;
    r = titleFont_.Construct(Osp::Graphics::kFontStylePlain, kTitleSize);
    if (Osp::Failed(r)) return r;
    r = hintFont_.Construct(Osp::Graphics::kFontStyleItalic, kHintSize);
    return Osp::Failed(r) ? r : cardTimer_.Construct(*this);
}

result SettingForm::LoadPictures() {
    Osp::Media::Image decoder;
    result r = decoder.Construct();
    for (std::size_t i = 0; i < kPictureCount && Osp::Succeeded(r); ++i) {
        r = LoadPicture(decoder, kResources[i], pictures_[i]);
    }
    return r;
}

result SettingForm::OnInitializing() {
    result r = SetOrientation(Osp::Ui::Orientation::kLandscape);
    if (Osp::Failed(r)) return r;
    AddKeyEventListener(*this);
    r = AddReturnButton(*this, *this, pictures_[kReturn], pictures_[kReturnDown]);
    if (Osp::Failed(r)) return r;
    r = AddResolutionButtons();
    return Osp::Failed(r) ? r : AddToggles();
}

result SettingForm::AddResolutionButtons() {
    for (std::size_t i = 0; i < kMostResolutions; ++i) {
        const int number = static_cast<int>(i);
        const result r = AddButton(resolutions_[i], ResolutionBounds(number),
                                   kActionFirstResolution + number, "Resolution");
        if (Osp::Failed(r)) return r;
        (void)resolutions_[i]->SetShowState(false);
    }
    return result::kSuccess;
}

result SettingForm::AddToggles() {
    const struct {
        Button* SettingForm::*member;
        int id;
        int y;
        const char* name;
    } toggles[] = {{&SettingForm::sound_, kActionSound, 182, "Sound Effect"},
                   {&SettingForm::memory_, kActionMemory, 247, "Use External Memory"},
                   {&SettingForm::facebook_, kActionFacebook, 312, "Facebook"},
                   {&SettingForm::twitter_, kActionTwitter, 377, "Twitter"}};
    for (const auto& toggle : toggles) {
        const result r =
            AddButton(this->*toggle.member, ToggleBounds(toggle.y), toggle.id, toggle.name);
        if (Osp::Failed(r)) return r;
        SetToggle(*(this->*toggle.member), false);
    }
    return result::kSuccess;
}

result SettingForm::AddButton(Button*& button, const Rectangle& bounds, int actionId,
                              const char* name) {
    auto created = std::make_unique<Button>();
    result r = created->Construct(bounds);
    if (Osp::Failed(r)) return r;
    created->SetActionId(actionId);
    created->SetName(name);
    created->AddActionEventListener(*this);
    r = AddControl(created.get());
    if (Osp::Succeeded(r)) button = created.release();
    return r;
}

result SettingForm::OnTerminating() {
    return cardTimer_.Cancel();
}

// The key is the return button.
void SettingForm::OnKeyPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode keyCode) {
    if (keyCode == Osp::Ui::KeyCode::kBack) (void)ReturnToMainForm(true);
}

bool SettingForm::OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) {
    Form::OnUserEventReceivedN(requestId, args);
    if (requestId != kRequestBecameCurrent) return false;
    Refresh();
    return true;
}

result SettingForm::ReturnToMainForm(bool changed) {
    return LeaveForMainForm(*frame_, *mainForm_, *this,
                            changed ? std::optional(kRequestReturnFromAlbum) : std::nullopt);
}

result SettingForm::OnDraw() {
    const std::unique_ptr<Osp::Graphics::Canvas> canvas(GetCanvasN());
    if (!canvas) return result::kSuccess;
    result r = canvas->Clear();
    if (Osp::Failed(r)) return r;
    r = canvas->DrawBitmap(Point{}, pictures_[kGround]);
    if (Osp::Failed(r)) return r;
    canvas->SetForegroundColor(kTextColor);
    (void)canvas->SetFont(titleFont_);
    for (const RowLayout& row : kRows) {
        r = canvas->DrawBitmap(Rectangle{kIconX, row.iconY, kIconSide, kIconSide},
                               pictures_[row.icon]);
        if (Osp::Failed(r)) return r;
        r = canvas->DrawText({kTitleX, row.titleY}, row.title);
        if (Osp::Failed(r)) return r;
    }
    (void)canvas->SetFont(hintFont_);
    return canvas->DrawText(kHintPlace, "High Resolution, Low Processing Speed.");
}

}  // namespace Kivo
