// A picture or a line of text.
#pragma once

#include <osp/graphics/bitmap.h>
#include <osp/graphics/color.h>
#include <osp/graphics/font.h>
#include <osp/ui/control.h>

namespace Osp::Ui::Controls {

/// Shows both where it has both, the text above the picture, each from the top left.
class Label : public Control {
  public:
    /// `bounds` are in the parent, in pixels; kInvalidArgument for an empty rectangle.
    result Construct(const Graphics::Rectangle& bounds, const Base::String& text);

    /// Drawn at the top left; shares the bitmap's pixels. Redraws.
    void SetBackgroundBitmap(const Graphics::Bitmap& bitmap);
    /// Redraws.
    void SetText(const Base::String& text);
    const Base::String& GetText() const { return text_; }
    /// Default: plain, 24, the text colour of the look. kInvalidArgument for an unconstructed font.
    result SetTextFont(const Graphics::Font& font);
    void SetTextColor(const Graphics::Color& color);

    result OnDraw() override;

  private:
    Base::String text_;
    Graphics::Bitmap bitmap_;
    Graphics::Font font_;
    Graphics::Color color_{0x40, 0x40, 0x40, 255};
};

}  // namespace Osp::Ui::Controls
