// Touches on the camera screen.
//
// A finger shows a value before it sets one: the value buttons and the two sliding controls put the
// next value on the mask, and on themselves, while they are held. Once the finger is up, what is
// shown is what the settings say, whichever way it left:
//   - a release on a button is followed by its action, which sets the value and shows it;
//   - a release outside a button has no action, so the values are shown anew;
//   - a release of a slider stores the pending value;
//   - a touch that is taken away (DropTouch) has set nothing.
// The platform tells nobody of a touch that it takes away, hence touched_, the control that owes a
// release: whoever disables the keys or hides the screen drops the touch, and a release that comes
// all the same is nobody's.
//
// A slider is pulled out (extended) by a tap, then armed by a press; a drag moves its value by
// steps from the setting, not from the last step. A release without a move disarms it and puts it
// back; it stays out and armed after a drag, and the next press begins a new one. Deliberately, a
// press does not refresh the pending value, so that a tap stores what the last whole drag left.
#include <cstdlib>
#include <utility>

#include "ui/drag_steps.h"
#include "ui/overlay.h"
#include "ui/overlay_layout.h"

namespace Kivo {

using Osp::Graphics::Bitmap;
using Osp::Graphics::Point;
using Osp::Graphics::Rectangle;
using Osp::Ui::Controls::Button;

namespace {

constexpr int kAnimationStepMs = 10;
constexpr int kZoomBarStep = 14;
constexpr int kEffectRollStep = 13;

// Regions of the help picture; its edges belong to them.
constexpr Rectangle kHelpRegion{231, 135, 339, 211};
constexpr Rectangle kCreditRegion{257, 31, 179, 69};
constexpr Rectangle kCloseRegion{17, 401, 50, 50};

}  // namespace

void Overlay::OnTouchPressed(const Control& source, const Point& position) {
    if (!keysEnabled_) return;
    pressPoint_ = position;
    touched_ = &source == mask_ ? nullptr : &source;
    if (PreviewValue(source)) return;
    if (&source == zoomBar_) PressZoomBar();
    if (&source == effectRoll_) PressEffectRoll();
    if (&source == mask_) PressMask(position);
}

// Where a touch ends without a release, nothing that it showed may stay: the values on the screen
// are those of the settings again, and a drag under way has not been.
void Overlay::DropTouch() {
    if (std::exchange(touched_, nullptr) == nullptr) return;
    Drop(zoom_, static_cast<int>(setting_->GetZoomLevel()));
    Drop(effect_, static_cast<int>(setting_->GetPhotoEffect()));
    mask_->SetZoomBar(nullptr);
    mask_->SetEffectRoll(nullptr);
    UpdateOverlay();
    mask_->Vanish();
}

void Overlay::Drop(Slider& slider, int value) {
    slider.armed = slider.moved = false;
    slider.pending = static_cast<std::uint8_t>(value);
}

void Overlay::EnableKeys(bool enable) {
    keysEnabled_ = enable;
    if (!enable) DropTouch();
}

// A press shows the value that the action will set.
bool Overlay::PreviewValue(const Control& source) {
    if (&source == selection_) {
        const bool isFront =
            setting_->GetCameraSelection() != Osp::Media::CameraSelection::kPrimary;
        Preview(*selection_, isFront ? IconType::kBackCamera : IconType::kFrontCamera,
                pictures_.Get(kSelectionPictures, isFront ? 0 : 1));
    } else if (&source == flash_) {
        const bool isOff = setting_->GetFlashState() != FlashState::kOn;
        Preview(*flash_, isOff ? IconType::kFlashOn : IconType::kFlashOff,
                pictures_.Get(kFlashPictures, isOff ? 1 : 0));
    } else if (&source == whiteBalance_) {
        const int next = static_cast<int>(NextWhiteBalance(setting_->GetWhiteBalance()));
        Preview(*whiteBalance_, IconAfter(IconType::kFirstWhiteBalance, next),
                pictures_.Get(kWhiteBalancePictures, next));
    } else if (&source == hdr_) {
        const bool isOn = setting_->IsHdrEnabled();
        Preview(*hdr_, isOn ? IconType::kHdrOff : IconType::kHdrOn,
                pictures_.Get(kHdrPictures, isOn ? 0 : 1));
    } else {
        return false;
    }
    return true;
}

void Overlay::Preview(Button& button, IconType icon, const Bitmap& bitmap) {
    SetPictures(button, bitmap);
    mask_->AppearDimmed(icon);
}

void Overlay::PressZoomBar() {
    const bool isAtRest = zoomBarY_ == kZoomBarRetractedY || zoomBarY_ == kZoomBarExtendedY;
    PressSlider(zoom_, isAtRest, IconType::kFirstZoom, static_cast<int>(setting_->GetZoomLevel()));
}

void Overlay::PressEffectRoll() {
    const bool isAtRest =
        effectRollX_ == kEffectRollRetractedX || effectRollX_ == kEffectRollExtendedX;
    PressSlider(effect_, isAtRest, IconType::kFirstEffect,
                static_cast<int>(setting_->GetPhotoEffect()));
}

void Overlay::PressSlider(Slider& slider, bool isAtRest, IconType icon, int value) {
    if (!slider.extended) {
        if (isAtRest) Animate(slider);
        return;
    }
    if (slider.armed && !slider.moved) {
        Animate(slider);
        mask_->SetColor(0, 0, 0, 0);
        mask_->Vanish();
        return;
    }
    // Also after a drag that moved: the next one begins anew.
    slider.armed = true;
    slider.moved = false;
    // The pending value is deliberately not refreshed here.
    slider.lastReported = static_cast<std::uint8_t>(value);
    mask_->AppearDimmed(IconAfter(icon, value));
}

void Overlay::Animate(Slider& slider) {
    slider.animating = true;
    (void)animationTimer_->Start(kAnimationStepMs);
}

void Overlay::PressMask(const Point& position) {
    if (kHelpRegion.Contains(position)) {
        mask_->SetShowIcon(IconType::kHelp);
        mask_->RequestRedraw();
    } else if (kCreditRegion.Contains(position)) {
        mask_->SetShowIcon(IconType::kCredit);
        mask_->RequestRedraw();
    } else if (kCloseRegion.Contains(position)) {
        ShowScreen();
    }
}

void Overlay::OnTouchMoved(const Control& source, const Point& position) {
    if (!keysEnabled_ || &source != touched_) return;
    if (&source == zoomBar_ && zoom_.armed) DragZoom(position.x - pressPoint_.x);
    if (&source == effectRoll_ && effect_.armed) DragEffect(position.y - pressPoint_.y);
}

void Overlay::DragZoom(int dx) {
    if (std::abs(dx) < kPixelsPerDragStep) return;
    zoom_.moved = true;
    const int level = ZoomAfterDrag(static_cast<int>(setting_->GetZoomLevel()), dx);
    zoom_.pending = static_cast<std::uint8_t>(level);
    mask_->SetShowIcon(IconAfter(IconType::kFirstZoom, level));
    if (zoom_.pending == zoom_.lastReported) return;
    listener_->OnActionPerformed(*zoomBar_, kActionZoomChanging);
    zoomBar_->SetBackgroundBitmap(pictures_.Get(kZoomPictures, level));
    mask_->SetZoomBar(&pictures_.Get(kZoomPictures, level));
    mask_->RequestRedraw();
    zoom_.lastReported = zoom_.pending;
}

void Overlay::DragEffect(int dy) {
    if (std::abs(dy) < kPixelsPerDragStep) return;
    effect_.moved = true;
    const int effect = EffectAfterDrag(setting_->GetCameraType(),
                                       static_cast<int>(setting_->GetPhotoEffect()), dy);
    effect_.pending = static_cast<std::uint8_t>(effect);
    mask_->SetShowIcon(
        IconAfter(IconType::kFirstEffect, static_cast<int>(KnownEffect(effect_.pending))));
    if (effect_.pending == effect_.lastReported) return;
    listener_->OnActionPerformed(*effectRoll_, kActionEffectChanging);
    effectRoll_->SetBackgroundBitmap(RollPicture(effect));
    mask_->SetEffectRoll(&RollPicture(effect));
    mask_->RequestRedraw();
    effect_.lastReported = effect_.pending;
}

void Overlay::OnTouchReleased(const Control& source, const Point& position) {
    if (!keysEnabled_ || &source != touched_) return;
    if (&source == zoomBar_) {
        ReleaseZoomBar();
    } else if (&source == effectRoll_) {
        ReleaseEffectRoll();
    } else {
        // Released outside there is no action, and the button goes back to the value that holds.
        if (!source.GetScreenBounds().Contains(position)) UpdateOverlay();
        mask_->Disappear();
    }
    touched_ = nullptr;
}

void Overlay::ReleaseZoomBar() {
    mask_->SetZoomBar(nullptr);
    if (!zoom_.armed) return;
    setting_->SetZoomLevel(static_cast<ZoomLevel>(zoom_.pending));
    zoomBar_->SetBackgroundBitmap(pictures_.Get(kZoomPictures, zoom_.pending));
    listener_->OnActionPerformed(*zoomBar_, kActionZoom);
    EndDrag(zoom_);
}

void Overlay::ReleaseEffectRoll() {
    mask_->SetEffectRoll(nullptr);
    if (!effect_.armed) return;
    // What a long drag leaves outside the effects looks like Normal, and is stored as that.
    const PhotoEffect effect = KnownEffect(effect_.pending);
    setting_->SetPhotoEffect(effect);
    effectRoll_->SetBackgroundBitmap(RollPicture(static_cast<int>(effect)));
    EndDrag(effect_);
}

// Without a drag the touch was a tap: the control goes back.
void Overlay::EndDrag(Slider& slider) {
    if (!slider.moved) {
        slider.armed = false;
        Animate(slider);
    }
    mask_->SetColor(0, 0, 0, 0);
    mask_->Appear();
    mask_->Disappear();
}

void Overlay::OnTimerExpired(Osp::Base::Runtime::Timer&) {
    bool hasFinished = false;
    if (effect_.animating) {
        hasFinished |= Step(effect_, effectRollX_, kEffectRollStep, kEffectRollRetractedX,
                            kEffectRollExtendedX);
    }
    if (zoom_.animating) {
        hasFinished |= Step(zoom_, zoomBarY_, kZoomBarStep, kZoomBarRetractedY, kZoomBarExtendedY);
    }
    PlaceSliders();
    // When one arrives the timer stops, even if the other is still on its way.
    if (!hasFinished && (effect_.animating || zoom_.animating)) {
        (void)animationTimer_->Start(kAnimationStepMs);
    }
}

bool Overlay::Step(Slider& slider, int& place, int stepPixels, int retracted, int extended) {
    place += slider.extended ? -stepPixels : stepPixels;
    if (place != retracted && place != extended) return false;
    slider.extended = place == extended;
    slider.animating = false;
    return true;
}

void Overlay::PlaceSliders() {
    (void)zoomBar_->SetPosition(kZoomBarX, zoomBarY_);
    (void)effectRoll_->SetPosition(effectRollX_, kEffectRollY);
}

}  // namespace Kivo
