// The platform's typeface, for whoever lays text out.
#pragma once

#include <cairo.h>
#include <pango/pango.h>

#include <osp/base/string.h>
#include <osp/graphics/font.h>

#include "osp/base/owner.h"

namespace Osp::Graphics {

using LayoutOwner = Base::Owner<PangoLayout, g_object_unref>;

/// One line, for a context of the same kind as `context`. `font` is constructed.
LayoutOwner MakeLayout(cairo_t* context, const Font& font, const Base::String& text);

}  // namespace Osp::Graphics
