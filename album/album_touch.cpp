// Touches and the slide.
//
// The buttons are controls of their own and act by themselves, but a press that comes during a slide
// is no press, however late the finger leaves. What goes down on the form is for the photograph, if
// it goes down there. How it ends is decided by where it comes up: a tap has not
// moved sideways, a swipe has, by more than a tap may, and what lies between is neither.
//
// The old photograph slides over the empty desk; the new one is there when the old one is gone.
// Only then the index moves, so that whatever interrupts a slide still speaks of the old one.
#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

#include <osp/locales/locale_manager.h>

#include "album/album_form.h"
#include "album/album_layout.h"
#include "album/photo_information.h"
#include "ui/player_stop.h"

namespace Kivo {

using Osp::Base::String;
using Osp::Graphics::Point;

namespace {

constexpr int kStepMs = 10;

String TextOfDate(long long utcMs) {
    Osp::Locales::LocaleManager locales;
    if (Osp::Failed(locales.Construct())) return {};
    return locales.GetSystemTimeZone().UtcTimeToStandardTime(Osp::Base::DateTime(utcMs)).ToString();
}

}  // namespace

void AlbumForm::ForgetTouch() {
    pressPoint_.reset();
    isPressRefused_ = false;
}

void AlbumForm::OnTouchPressed(const Osp::Ui::Control& source, const Point& position) {
    ForgetTouch();
    isPressRefused_ = IsBlocked() && &source != this;
    if (IsBlocked() || IsEmpty()) return;
    if (AlbumLayout::kTouchArea.Contains(position)) pressPoint_ = position;
}

void AlbumForm::OnTouchReleased(const Osp::Ui::Control& source, const Point& position) {
    // Outside, no action follows that would ask.
    if (!source.GetScreenBounds().Contains(position)) isPressRefused_ = false;
    const std::optional<Point> press = std::exchange(pressPoint_, std::nullopt);
    if (!press || IsBlocked() || !AlbumLayout::kTouchArea.Contains(position)) return;
    const int distance = std::abs(press->x - position.x);
    if (distance <= AlbumLayout::kMostTapPixels) {
        Tap();
    } else if (distance >= AlbumLayout::kLeastSwipePixels) {
        Swipe(press->x > position.x);
    }
}

void AlbumForm::Tap() {
    if (photo_.isBroken) return;
    information_ = information_.title.IsEmpty() ? DescribeCurrent() : Information{};
    Refresh();
}

AlbumForm::Information AlbumForm::DescribeCurrent() const {
    const std::string title = TitleOf(photo_.description);
    const std::string& name = names_[static_cast<std::size_t>(index_)];
    // A photograph of another program's is called by its file.
    return {String(title.empty() ? name : title), TextOfDate(photo_.dateMs),
            String(SizeTextOf(photo_.description, photo_.size))};
}

void AlbumForm::Swipe(bool isForward) {
    const int next = index_ + (isForward ? 1 : -1);
    if (next < 0 || next >= static_cast<int>(names_.size())) return;
    information_ = {};
    isForward_ = isForward;
    step_ = 0;
    isSliding_ = true;
    StopIfActive(player_);
    if (setting_->IsEffectSoundEnabled()) (void)player_.Play();
    Refresh();
    (void)timer_.Start(kStepMs);
}

void AlbumForm::OnTimerExpired(Osp::Base::Runtime::Timer&) {
    ++step_;
    const int offset = AlbumLayout::SlideOffset(step_, isForward_);
    if (AlbumLayout::HasSlidAway(offset, bitmap_.GetWidth() == AlbumLayout::kPortraitWidth)) {
        EndSlide();
    } else {
        RequestRedraw();
        (void)timer_.Start(kStepMs);
    }
}

void AlbumForm::EndSlide() {
    loader_.Keep(photo_, bitmap_);
    isSliding_ = false;
    step_ = 0;
    const int last = std::max(0, static_cast<int>(names_.size()) - 1);
    index_ = std::clamp(index_ + (isForward_ ? 1 : -1), 0, last);
    LoadCurrent();
}

}  // namespace Kivo
