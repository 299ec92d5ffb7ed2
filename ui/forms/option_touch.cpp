// Touches and turns of the chooser.
//
// A touch belongs to the row in which it begins, and it begins with the press or, when the finger
// is still down after a turn, with the next move: so a finger that goes on drags place after place.
// While a row turns, touches are not looked at. A finger that has turned a row does not tap when it
// comes up. A press begins anew, whatever the last touch has left: nobody hears of the end of one
// that was taken away by the background.
//
// A turn takes its ten or five steps of 10 ms by the clock. A timer that comes late makes up for
// the steps that are due, so that a slow machine shows fewer of them but takes no longer.
#include <algorithm>
#include <cstdlib>

#include <osp/system/system_time.h>

#include "ui/forms/option_form.h"
#include "ui/player_stop.h"

namespace Kivo {

using Osp::Graphics::Point;
using Osp::Ui::Control;

namespace {

constexpr int kStepMs = 10;
constexpr int kCamerasTop = 53;
constexpr int kCamerasBottom = 309;  // the last row of pixels that is theirs
constexpr int kEffectsTop = 321;
constexpr int kCameraDragPixels = 21;
constexpr int kEffectDragPixels = 11;

/// Where a tap chooses, first and last column; the ranges overlap, and the first that fits decides.
struct TapRange {
    int first;
    int last;
};
constexpr TapRange kCameraBefore{17, 227};
constexpr TapRange kCameraShown{297, 587};
constexpr TapRange kCameraAfter{577, 787};

bool Contains(const TapRange& range, int x) {
    return x >= range.first && x <= range.last;
}

bool IsAmongCameras(int y) {
    return y >= kCamerasTop && y <= kCamerasBottom;
}

long long NowMs() {
    long long ticks = 0;
    (void)Osp::System::SystemTime::GetTicks(ticks);
    return ticks;
}

}  // namespace

void OptionForm::Reset() {
    if (timer_) (void)timer_->Cancel();
    ForgetTouch();
    isTurning_ = false;
    hasMoved_ = false;
    toRight_ = false;
    step_ = 0;
}

void OptionForm::ForgetTouch() {
    touchedRow_.reset();
    pressPoint_ = {};
}

void OptionForm::OnTouchPressed(const Control&, const Point& position) {
    if (isTurning_) return;
    ForgetTouch();
    hasMoved_ = false;
    Touch(position);
}

void OptionForm::Touch(const Point& position) {
    pressPoint_ = position;
    if (IsAmongCameras(position.y)) touchedRow_ = Row::kCameras;
    if (position.y >= kEffectsTop) touchedRow_ = Row::kEffects;
}

void OptionForm::OnTouchMoved(const Control&, const Point& position) {
    if (isTurning_) return;
    if (!touchedRow_) return Touch(position);
    const int threshold = *touchedRow_ == Row::kCameras ? kCameraDragPixels : kEffectDragPixels;
    if (std::abs(pressPoint_.x - position.x) >= threshold) BeginTurn(pressPoint_.x <= position.x);
}

void OptionForm::OnTouchReleased(const Control&, const Point& position) {
    if (isTurning_) return;
    const bool isTap = touchedRow_ == Row::kCameras && !hasMoved_ && IsAmongCameras(position.y);
    if (isTap) TapCamera(position.x);
}

// Unlike a drag, a tap deliberately keeps the effect.
void OptionForm::TapCamera(int x) {
    const CameraType type = setting_->GetCameraType();
    if (Contains(kCameraBefore, x)) {
        setting_->SetCameraType(TypeBeside(type, true));
    } else if (!Contains(kCameraShown, x)) {
        if (!Contains(kCameraAfter, x)) return;
        setting_->SetCameraType(TypeBeside(type, false));
    }
    (void)ReturnToMainForm(true);
}

void OptionForm::BeginTurn(bool toRight) {
    toRight_ = toRight;
    step_ = 0;
    isTurning_ = true;
    hasMoved_ = true;
    turnBeganMs_ = NowMs();
    auto& player = players_[static_cast<std::size_t>(*touchedRow_)];
    if (setting_->IsEffectSoundEnabled()) {
        StopIfActive(*player);
        (void)player->Play();
    }
    (void)timer_->Start(kStepMs);
}

int OptionForm::StepsDue() const {
    return static_cast<int>(std::clamp((NowMs() - turnBeganMs_) / kStepMs, 0LL, 100LL));
}

void OptionForm::OnTimerExpired(Osp::Base::Runtime::Timer&) {
    const int last = *touchedRow_ == Row::kCameras ? kCameraCarousel.steps : kEffectCarousel.steps;
    // The clock can be set; the row turns all the same.
    step_ = std::min(std::max(step_ + 1, StepsDue()), last);
    RequestRedraw();
    if (step_ == last) {
        EndTurn();
    } else {
        (void)timer_->Start(kStepMs);
    }
}

void OptionForm::EndTurn() {
    const CameraType type = setting_->GetCameraType();
    if (*touchedRow_ == Row::kCameras) {
        const CameraType next = TypeBeside(type, toRight_);
        if (!OffersAllEffects(next)) setting_->SetPhotoEffect(PhotoEffect::kNormal);
        setting_->SetCameraType(next);
    } else {
        setting_->SetPhotoEffect(EffectBeside(type, setting_->GetPhotoEffect(), toRight_));
    }
    isTurning_ = false;
    ForgetTouch();
}

}  // namespace Kivo
