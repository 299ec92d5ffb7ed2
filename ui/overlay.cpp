// The camera screen's controls and what the camera form does with them.
//
// Stacking tells what can be touched. The mask is added first and lies below the controls until it
// is shown, which raises it above them; a control that is shown or enabled afterwards lies above
// the mask again. So the help covers the controls, and a control that is enabled while a cover is
// up looks through it.
#include "ui/overlay.h"

#include <algorithm>

#include "ui/overlay_layout.h"
#include "ui/presenting.h"

namespace Kivo {

using Osp::Graphics::Bitmap;
using Osp::Graphics::Rectangle;
using Osp::Ui::Controls::Button;
using Osp::Ui::Controls::Label;

namespace {

constexpr Rectangle kZoomBarBounds{kZoomBarX, kZoomBarRetractedY, 295, 90};
constexpr Rectangle kEffectRollBounds{kEffectRollRetractedX, kEffectRollY, 246, 246};
constexpr Rectangle kFocusGuideBounds{323, 178, 153, 124};

// What is said of a button in the table below.
constexpr unsigned kOnMask = 1U;       // part of the help, hidden until that is shown
constexpr unsigned kTouchSource = 2U;  // shows its value while it is held
constexpr unsigned kCapture = 4U;      // taken away by a running capture
constexpr unsigned kHides = 8U;        // not there with every camera

}  // namespace

/// All that differs between the buttons.
struct Overlay::ButtonLayout {
    Button* Overlay::*member;
    ActionId id;
    Rectangle bounds;
    PictureGroup pictures;
    int pressedIndex;
    unsigned flags;
    const char* name;
};

const std::array<Overlay::ButtonLayout, Overlay::kButtonCount> Overlay::kButtons{{
    // clang-format off
    {&Overlay::capture_, kActionCapture, {682, 173, 109, 109}, kCapturePictures, 1,
     kCapture, "Shutter"},
    {&Overlay::cameraType_, kActionCameraType, {11, 9, 100, 90}, kCameraTypePictures, 0,
     kCapture, "Camera and effect"},
    {&Overlay::selection_, kActionCameraSelection, {578, 385, 80, 80}, kSelectionPictures, 0,
     kCapture | kTouchSource, "Front or back camera"},
    {&Overlay::album_, kActionAlbum, {696, 385, 80, 80}, kAlbumPicture, 0,
     kCapture, "Album"},
    {&Overlay::smallCapture_, kActionCloseHelp, {715, 16, 69, 69}, kSmallCapturePictures, 1,
     kOnMask, "Back to the camera"},
    {&Overlay::logo_, kActionLogo, {130, 20, 122, 48}, kLogoPicture, 0,
     kOnMask, "Credits"},
    {&Overlay::flash_, kActionFlash, {460, 385, 80, 80}, kFlashPictures, 0,
     kCapture | kTouchSource | kHides, "Flash"},
    {&Overlay::whiteBalance_, kActionWhiteBalance, {342, 385, 80, 80}, kWhiteBalancePictures, 0,
     kCapture | kTouchSource | kHides, "White balance"},
    {&Overlay::hdr_, kActionHdr, {224, 385, 80, 80}, kHdrPictures, 0,
     kCapture | kTouchSource | kHides, "HDR"},
    {&Overlay::info_, kActionInfo, {16, 400, 51, 51}, kInfoPicture, 0,
     0, "Help"},
    {&Overlay::settings_, kActionSettings, {70, 400, 51, 51}, kSettingsPicture, 0,
     kCapture, "Settings"},
    // clang-format on
}};

result Overlay::Construct(Osp::Ui::IActionEventListener* listener, CameraSetting* setting,
                          const Rectangle& bounds) {
    listener_ = listener;
    setting_ = setting;
    zoomBarY_ = kZoomBarRetractedY;
    effectRollX_ = kEffectRollRetractedX;
    result r = OverlayPanel::Construct(bounds);
    if (Osp::Failed(r)) return r;
    Osp::Media::Image decoder;
    r = decoder.Construct();
    if (Osp::Failed(r)) return r;
    r = pictures_.Load(decoder);
    if (Osp::Failed(r)) return r;
    r = AddMask(decoder, bounds);
    if (Osp::Failed(r)) return r;
    r = AddLabel(zoomBar_, kZoomBarBounds, pictures_.Get(kZoomPictures), "Zoom");
    if (Osp::Failed(r)) return r;
    r = AddLabel(effectRoll_, kEffectRollBounds, RollPicture(0), "Effect");
    if (Osp::Failed(r)) return r;
    for (const ButtonLayout& layout : kButtons) {
        r = AddButton(layout);
        if (Osp::Failed(r)) return r;
    }
    r = AddLabel(focusGuide_, kFocusGuideBounds, pictures_.Get(kFocusPictures), "Focus");
    if (Osp::Failed(r)) return r;

    mask_->AddTouchEventListener(*this);
    zoomBar_->AddTouchEventListener(*this);
    effectRoll_->AddTouchEventListener(*this);
    // The front camera has no zoom.
    if (setting_->GetCameraSelection() == Osp::Media::CameraSelection::kSecondary) {
        (void)zoomBar_->SetShowState(false);
    }
    animationTimer_ = std::make_unique<Osp::Base::Runtime::Timer>();
    return animationTimer_->Construct(*this);
}

result Overlay::AddMask(Osp::Media::Image& decoder, const Rectangle& bounds) {
    auto mask = std::make_unique<MaskPanel>();
    result r = mask->Construct(&decoder, bounds);
    if (Osp::Failed(r)) return r;
    r = AddControl(mask.get());
    if (Osp::Succeeded(r)) mask_ = mask.release();
    return r;
}

result Overlay::AddLabel(Label*& label, const Rectangle& bounds, const Bitmap& bitmap,
                         const char* name) {
    auto created = std::make_unique<Label>();
    result r = created->Construct(bounds, "");
    if (Osp::Failed(r)) return r;
    created->SetBackgroundBitmap(bitmap);
    created->SetName(name);
    r = AddControl(created.get());
    if (Osp::Succeeded(r)) label = created.release();
    return r;
}

result Overlay::AddButton(const ButtonLayout& layout) {
    auto button = std::make_unique<Button>();
    result r = button->Construct(layout.bounds);
    if (Osp::Failed(r)) return r;
    button->SetActionId(layout.id);
    button->SetName(layout.name);
    button->SetNormalBitmap(pictures_.Get(layout.pictures));
    button->SetPressedBitmap(pictures_.Get(layout.pictures, layout.pressedIndex));
    button->AddActionEventListener(*listener_);
    if (layout.flags & kTouchSource) button->AddTouchEventListener(*this);
    const bool isOnMask = layout.flags & kOnMask;
    if (isOnMask) (void)button->SetShowState(false);
    r = isOnMask ? mask_->AddControl(button.get()) : AddControl(button.get());
    if (Osp::Succeeded(r)) this->*layout.member = button.release();
    return r;
}

/// Null where no button with that id has the flag.
Button* Overlay::FindButton(int id, unsigned flag) const {
    const auto found = std::ranges::find_if(kButtons, [&](const ButtonLayout& layout) {
        return layout.id == id && (layout.flags & flag);
    });
    return found == kButtons.end() ? nullptr : this->*found->member;
}

Osp::Ui::Control* Overlay::VisibilityTarget(int id) const {
    if (id == kActionZoom) return zoomBar_;
    // Its action's id does nothing here.
    if (id == kCameraSelectionVisibility) return selection_;
    return FindButton(id, kHides);
}

result Overlay::SetButtonVisible(int id, bool visible) {
    Osp::Ui::Control* const target = VisibilityTarget(id);
    if (target == nullptr) return result::kSuccess;
    const result r = target->SetShowState(visible);
    return Osp::Failed(r) ? r : Present(*target);
}

result Overlay::SetButtonEnabled(int id, bool enable) {
    Button* const target = FindButton(id, kCapture);
    if (target == nullptr) return result::kSuccess;
    const result r = target->SetEnabled(enable);
    return Osp::Failed(r) ? r : Present(*target);
}

bool Overlay::IsButtonEnabled(int id) const {
    const Button* const target = FindButton(id, kCapture);
    return target != nullptr && target->IsEnabled();
}

void Overlay::SetPictures(Button& button, const Bitmap& bitmap) {
    button.SetNormalBitmap(bitmap);
    button.SetPressedBitmap(bitmap);
}

void Overlay::SetCaptureButton(int n) {
    // The picture of no shot at all is set by HideScreen, hence n + 1.
    switch (setting_->GetCameraType()) {
        case CameraType::kQuad:
            SetPictures(*capture_, pictures_.Get(kQuadPictures, n + 1));
            break;
        case CameraType::kAction:
            SetPictures(*capture_, pictures_.Get(kActionPictures, n + 1));
            break;
        case CameraType::kMix:
            SetPictures(*capture_, pictures_.Get(kMixPictures, n + 1));
            break;
        default:
            capture_->SetNormalBitmap(pictures_.Get(kCapturePictures, 0));
            capture_->SetPressedBitmap(pictures_.Get(kCapturePictures, 1));
            break;
    }
    capture_->RequestRedraw();
}

void Overlay::SetFocused(bool focused) {
    focusGuide_->SetBackgroundBitmap(pictures_.Get(kFocusPictures, focused ? 1 : 0));
}

void Overlay::FlashEffect() {
    mask_->SetColor(255, 255, 255, 255);
    mask_->SetShowIcon(IconType::kFlashText);
    mask_->Appear();
}

void Overlay::ShowHelpButtons(bool show) {
    for (Button* button : {smallCapture_, logo_}) {
        (void)button->SetShowState(show);
        if (show) (void)button->Draw();
    }
}

void Overlay::ShowHelp() {
    ShowHelpButtons(true);
    mask_->AppearDimmed(IconType::kHelp);
}

void Overlay::ShowCredit() {
    mask_->SetShowIcon(IconType::kCredit);
    mask_->RequestRedraw();
}

void Overlay::ShowProcessing() {
    SetFocused(false);
    mask_->AppearDimmed(IconType::kProcessing);
}

void Overlay::HideScreen() {
    DropTouch();
    ShowHelpButtons(false);
    mask_->SetShowIcon(IconType::kNone);
    SetCaptureButton(-1);
    SetPictures(*cameraType_,
                pictures_.Get(kCameraTypePictures, static_cast<int>(setting_->GetCameraType())));
    effectRoll_->SetBackgroundBitmap(RollPicture(static_cast<int>(setting_->GetPhotoEffect())));
    for (Slider* slider : {&zoom_, &effect_}) {
        slider->extended = slider->animating = slider->armed = slider->moved = false;
    }
    zoomBarY_ = kZoomBarRetractedY;
    effectRollX_ = kEffectRollRetractedX;
    PlaceSliders();
    mask_->SetColor(0, 0, 0, 255);
    mask_->Appear();
    Reveal(*this);
}

void Overlay::ShowScreen() {
    ShowHelpButtons(false);
    mask_->Disappear();
}

void Overlay::UpdateOverlay() {
    zoomBar_->SetBackgroundBitmap(
        pictures_.Get(kZoomPictures, static_cast<int>(setting_->GetZoomLevel())));
    effectRoll_->SetBackgroundBitmap(RollPicture(static_cast<int>(setting_->GetPhotoEffect())));
    const bool isFlashOn = setting_->GetFlashState() == FlashState::kOn;
    SetPictures(*selection_, SelectionPicture());
    SetPictures(*flash_, pictures_.Get(kFlashPictures, isFlashOn ? 1 : 0));
    SetPictures(*whiteBalance_, pictures_.Get(kWhiteBalancePictures,
                                              static_cast<int>(setting_->GetWhiteBalance())));
    SetPictures(*hdr_, pictures_.Get(kHdrPictures, setting_->IsHdrEnabled() ? 1 : 0));
    SetPictures(*cameraType_,
                pictures_.Get(kCameraTypePictures, static_cast<int>(setting_->GetCameraType())));
    RequestRedraw();
}

const Bitmap& Overlay::RollPicture(int effect) const {
    const bool offersAll = OffersAllEffects(setting_->GetCameraType());
    return pictures_.Get(offersAll ? kRollPictures : kDimmedRollPictures, effect);
}

const Bitmap& Overlay::SelectionPicture() const {
    return pictures_.Get(kSelectionPictures, static_cast<int>(setting_->GetCameraSelection()));
}

}  // namespace Kivo
