// The full-screen panel over the preview: a colour, and on it at most one picture.
#pragma once

#include <array>
#include <memory>

#include <osp/base/runtime/timer.h>
#include <osp/graphics/bitmap.h>
#include <osp/graphics/color.h>
#include <osp/graphics/font.h>
#include <osp/media/image.h>
#include <osp/ui/controls/panel.h>

#include "ui/icon_type.h"

namespace Kivo {

class MaskPanel : public Osp::Ui::Controls::Panel, public Osp::Base::Runtime::ITimerEventListener {
  public:
    /// Decodes the pictures with `decoder`, which is not kept.
    result Construct(Osp::Media::Image* decoder, const Osp::Graphics::Rectangle& bounds);

    /// The setters store without redrawing. Channels are 0 to 255.
    void SetColor(int red, int green, int blue, int alpha);
    void SetShowIcon(IconType icon) { icon_ = icon; }
    /// Pictures of the extended controls, drawn for as long as they are set; null removes. Not
    /// owned; they outlive their use here.
    void SetZoomBar(const Osp::Graphics::Bitmap* bitmap) { zoomBar_ = bitmap; }
    void SetEffectRoll(const Osp::Graphics::Bitmap* bitmap) { effectRoll_ = bitmap; }

    /// Shows, draws and presents the panel; a fade under way ends here.
    void Appear();
    /// The same with that picture, on the scrim that dims the preview.
    void AppearDimmed(IconType icon);
    /// Takes the picture away at once and fades the colour out in six steps of 10 ms; a fade under
    /// way begins again from the opacity it has reached.
    void Disappear();
    /// Takes everything away at once, a fade under way included.
    void Vanish();

    result OnDraw() override;
    void OnTimerExpired(Osp::Base::Runtime::Timer& timer) override;

  private:
    void StopFade();
    result DrawIcon(Osp::Graphics::Canvas& canvas);
    void DrawPicture(Osp::Graphics::Canvas& canvas, IconType icon);

    std::unique_ptr<Osp::Base::Runtime::Timer> fadeTimer_;
    std::array<Osp::Graphics::Bitmap, kIconPictures.size()> pictures_;
    const Osp::Graphics::Bitmap* zoomBar_ = nullptr;     // not owned
    const Osp::Graphics::Bitmap* effectRoll_ = nullptr;  // not owned
    Osp::Graphics::Font font_;
    int fadeStep_ = 0;
    int red_ = 0;
    int green_ = 0;
    int blue_ = 0;
    int alpha_ = 255;
    IconType icon_ = IconType::kNone;
};

}  // namespace Kivo
