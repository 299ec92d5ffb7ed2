#include "ui/mask_panel.h"

#include <algorithm>
#include <cstdint>

#include "ui/load_picture.h"
#include "ui/overlay_layout.h"
#include "ui/presenting.h"

namespace Kivo {

namespace {

constexpr int kFadeStepMs = 10;
constexpr int kLastFadeStep = 5;
constexpr int kFontSize = 32;
constexpr int kScrimAlpha = 175;
constexpr Osp::Graphics::Color kTextColor{60, 60, 60, 255};
constexpr Osp::Graphics::Point kFlashTextPlace{345, 225};
constexpr Osp::Graphics::Point kZoomBarPlace{kZoomBarX, kZoomBarExtendedY};
constexpr Osp::Graphics::Point kEffectRollPlace{kEffectRollExtendedX, kEffectRollY};

std::uint8_t Channel(int value) {
    return static_cast<std::uint8_t>(value);
}

}  // namespace

result MaskPanel::Construct(Osp::Media::Image* decoder, const Osp::Graphics::Rectangle& bounds) {
    result r = Panel::Construct(bounds);
    if (Osp::Failed(r)) return r;
    for (std::size_t i = 0; i < pictures_.size(); ++i) {
        r = LoadPicture(*decoder, kIconPictures[i].path, pictures_[i]);
        if (Osp::Failed(r)) return r;
    }
    r = font_.Construct(Osp::Graphics::kFontStyleBold, kFontSize);
    if (Osp::Failed(r)) return r;
    fadeTimer_ = std::make_unique<Osp::Base::Runtime::Timer>();
    return fadeTimer_->Construct(*this);
}

void MaskPanel::SetColor(int red, int green, int blue, int alpha) {
    red_ = red;
    green_ = green;
    blue_ = blue;
    alpha_ = alpha;
}

void MaskPanel::Appear() {
    StopFade();
    Reveal(*this);
}

void MaskPanel::AppearDimmed(IconType icon) {
    SetColor(0, 0, 0, kScrimAlpha);
    SetShowIcon(icon);
    Appear();
}

void MaskPanel::Disappear() {
    // At step 0 the timer of a fade that has just begun still runs, and Start would be refused.
    StopFade();
    icon_ = IconType::kNone;
    (void)fadeTimer_->Start(kFadeStepMs);
}

void MaskPanel::Vanish() {
    StopFade();
    icon_ = IconType::kNone;
    (void)SetShowState(false);
}

void MaskPanel::StopFade() {
    (void)fadeTimer_->Cancel();
    fadeStep_ = 0;
}

void MaskPanel::OnTimerExpired(Osp::Base::Runtime::Timer&) {
    RequestRedraw();
    if (fadeStep_ > kLastFadeStep) return Vanish();
    alpha_ = std::max(0, alpha_ + alpha_ / (fadeStep_ - kLastFadeStep - 1));
    ++fadeStep_;
    (void)fadeTimer_->Start(kFadeStepMs);
}

result MaskPanel::OnDraw() {
    const std::unique_ptr<Osp::Graphics::Canvas> canvas(GetCanvasN());
    if (!canvas) return result::kSuccess;
    // Filling replaces what was there, so nothing needs to be cleared first.
    result r = canvas->FillRectangle(
        {Channel(red_), Channel(green_), Channel(blue_), Channel(alpha_)}, canvas->GetBounds());
    if (Osp::Failed(r)) return r;
    r = canvas->SetFont(font_);
    if (Osp::Failed(r)) return r;
    canvas->SetForegroundColor(kTextColor);
    if (zoomBar_ != nullptr) (void)canvas->DrawBitmap(kZoomBarPlace, *zoomBar_);
    if (effectRoll_ != nullptr) (void)canvas->DrawBitmap(kEffectRollPlace, *effectRoll_);
    return DrawIcon(*canvas);
}

result MaskPanel::DrawIcon(Osp::Graphics::Canvas& canvas) {
    if (icon_ == IconType::kFlashText) return canvas.DrawText(kFlashTextPlace, "Flash ON");
    if (icon_ == IconType::kCredit) DrawPicture(canvas, IconType::kHelp);
    DrawPicture(canvas, icon_);
    return result::kSuccess;
}

void MaskPanel::DrawPicture(Osp::Graphics::Canvas& canvas, IconType icon) {
    const auto index = static_cast<std::size_t>(icon);
    if (index == 0 || index > pictures_.size()) return;
    (void)canvas.DrawBitmap(kIconPictures[index - 1].place, pictures_[index - 1]);
}

}  // namespace Kivo
