// Text wrapped to a width.
#pragma once

#include <cairo.h>
#include <pango/pango.h>
#include <string>
#include <utility>

#include <osp/graphics/font.h>
#include <osp/graphics/point.h>
#include <osp/graphics/rectangle.h>

#include "osp/base/owner.h"

namespace Osp::Ui {

/// Positions count UTF-16 units of the text; pixels are the layout's own, from its top left.
class TextLayout {
  public:
    using Range = std::pair<int, int>;  // begin and end

    /// `width` and the font's size are positive; `underlined` is empty for none.
    TextLayout(std::u16string text, const Graphics::Font& font, int width, Range underlined);

    int Height() const;
    /// The line beside which the caret stands: its width is 0.
    Graphics::Rectangle CaretAt(int position) const;
    int PositionAt(Graphics::Point point) const;
    /// Where the line with `position` begins or ends.
    int LineStart(int position) const;
    int LineEnd(int position) const;

    /// In the context's colour, the top left at the current origin.
    void Paint(cairo_t* context) const;
    /// Fills what is behind `range`.
    void FillBehind(cairo_t* context, Range range) const;

  private:
    PangoLayoutLine* LineOf(int position) const;
    int Index(int position) const;

    std::u16string text_;
    int width_;
    Base::Owner<PangoLayout, g_object_unref> layout_;
};

}  // namespace Osp::Ui
