// Pango keeps the text in UTF-8 and speaks in its indices; TextPlaces' functions translate. A line
// that was wrapped ends where the next begins, and the caret at that place belongs to the next.
#include "osp/ui/text/text_layout.h"

#include <algorithm>
#include <cassert>
#include <pango/pangocairo.h>

#include <osp/base/string.h>

#include "osp/graphics/surface.h"
#include "osp/graphics/typeface.h"
#include "osp/ui/text/text_places.h"

namespace Osp::Ui {

namespace {

constexpr int kLineGap = 2;

using Attributes = Base::Owner<PangoAttrList, pango_attr_list_unref>;

Attributes Underline(int begin, int end) {
    Attributes attributes(pango_attr_list_new());
    PangoAttribute* const underline = pango_attr_underline_new(PANGO_UNDERLINE_SINGLE);
    underline->start_index = static_cast<guint>(begin);
    underline->end_index = static_cast<guint>(end);
    pango_attr_list_insert(attributes.get(), underline);  // which takes it
    return attributes;
}

}  // namespace

TextLayout::TextLayout(std::u16string text, const Graphics::Font& font, int width, Range underlined)
    : text_(std::move(text)), width_(width) {
    assert(width > 0);
    const Graphics::Surface any({1, 1}, Graphics::Surface::Kind::kWithAlpha);
    const Graphics::CairoPointer context(cairo_create(any.Cairo()));
    layout_ = Graphics::MakeLayout(context.get(), font, Base::String(text_));
    pango_layout_set_single_paragraph_mode(layout_.get(), FALSE);
    pango_layout_set_width(layout_.get(), width * PANGO_SCALE);
    pango_layout_set_wrap(layout_.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_spacing(layout_.get(), kLineGap * PANGO_SCALE);
    if (underlined.first == underlined.second) return;
    pango_layout_set_attributes(layout_.get(),
                                Underline(Index(underlined.first), Index(underlined.second)).get());
}

int TextLayout::Index(int position) const {
    return ToUtf8Index(text_, position);
}

int TextLayout::Height() const {
    int height = 0;
    pango_layout_get_pixel_size(layout_.get(), nullptr, &height);
    return height;
}

Graphics::Rectangle TextLayout::CaretAt(int position) const {
    PangoRectangle caret;
    pango_layout_get_cursor_pos(layout_.get(), Index(position), &caret, nullptr);
    // Spaces that hang over the end of a line do not take the caret out of sight.
    return {std::clamp(PANGO_PIXELS(caret.x), 0, width_), PANGO_PIXELS(caret.y), 0,
            PANGO_PIXELS(caret.height)};
}

int TextLayout::PositionAt(Graphics::Point point) const {
    int index = 0;
    int trailing = 0;  // characters to go on, when the point is in the second half
    pango_layout_xy_to_index(layout_.get(), point.x * PANGO_SCALE, point.y * PANGO_SCALE, &index,
                             &trailing);
    const char* const utf8 = pango_layout_get_text(layout_.get());
    const char* const place = g_utf8_offset_to_pointer(utf8 + index, trailing);
    return FromUtf8Index(text_, static_cast<int>(place - utf8));
}

PangoLayoutLine* TextLayout::LineOf(int position) const {
    int line = 0;
    pango_layout_index_to_line_x(layout_.get(), Index(position), FALSE, &line, nullptr);
    return pango_layout_get_line_readonly(layout_.get(), line);
}

int TextLayout::LineStart(int position) const {
    return FromUtf8Index(text_, LineOf(position)->start_index);
}

int TextLayout::LineEnd(int position) const {
    const PangoLayoutLine* const line = LineOf(position);
    const int end = FromUtf8Index(text_, line->start_index + line->length);
    const bool isWrapped =
        end < static_cast<int>(text_.size()) && text_[static_cast<std::size_t>(end)] != u'\n';
    return isWrapped ? TextPlaces(text_).Before(end) : end;
}

void TextLayout::Paint(cairo_t* context) const {
    cairo_move_to(context, 0, 0);
    pango_cairo_show_layout(context, layout_.get());
}

void TextLayout::FillBehind(cairo_t* context, Range range) const {
    const Base::Owner<PangoLayoutIter, pango_layout_iter_free> iterator(
        pango_layout_get_iter(layout_.get()));
    do {
        PangoLayoutLine* const line = pango_layout_iter_get_line_readonly(iterator.get());
        const int begin = std::max(Index(range.first), line->start_index);
        const int end = std::min(Index(range.second), line->start_index + line->length);
        if (begin >= end) continue;
        PangoRectangle area;
        pango_layout_iter_get_line_extents(iterator.get(), nullptr, &area);
        int* ends = nullptr;
        int count = 0;
        pango_layout_line_get_x_ranges(line, begin, end, &ends, &count);
        const Base::Owner<int, g_free> owner(ends);
        for (int i = 0; i < count; ++i) {
            const double left = pango_units_to_double(ends[2 * i]);
            const double right = pango_units_to_double(ends[2 * i + 1]);
            cairo_rectangle(context, left, pango_units_to_double(area.y), right - left,
                            pango_units_to_double(area.height) + kLineGap);
        }
    } while (pango_layout_iter_next_line(iterator.get()));
    cairo_fill(context);
}

}  // namespace Osp::Ui
