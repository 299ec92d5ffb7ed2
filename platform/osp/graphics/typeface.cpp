#include "osp/graphics/typeface.h"

#include <cassert>
#include <pango/pangocairo.h>

namespace Osp::Graphics {

namespace {

constexpr const char* kTypeface = "Cabin";
constexpr double kLineHeightOverEm = 1.215;  // of the typeface; fonts are sized by their lines

}  // namespace

LayoutOwner MakeLayout(cairo_t* context, const Font& font, const Base::String& text) {
    assert(font.GetSize() > 0);
    LayoutOwner layout(pango_cairo_create_layout(context));
    const Base::Owner<PangoFontDescription, pango_font_description_free> description(
        pango_font_description_from_string(kTypeface));
    const int style = font.GetStyle();
    pango_font_description_set_absolute_size(description.get(),
                                             font.GetSize() / kLineHeightOverEm * PANGO_SCALE);
    pango_font_description_set_weight(
        description.get(), (style & kFontStyleBold) ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(
        description.get(), (style & kFontStyleItalic) ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    pango_layout_set_font_description(layout.get(), description.get());
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    pango_layout_set_text(layout.get(), text.ToUtf8().c_str(), -1);
    return layout;
}

}  // namespace Osp::Graphics
