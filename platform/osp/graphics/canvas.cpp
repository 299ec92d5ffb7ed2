// A canvas is a Cairo context for as long as it lives, on a surface that it shares with the
// control: the control may end or drop its picture meanwhile. Cairo's own state (source, path)
// means nothing between two calls; everything that a call needs it sets, and what it changes beyond
// that it puts back.
#include <cassert>
#include <numbers>
#include <pango/pangocairo.h>
#include <utility>

#include <osp/graphics/canvas.h>

#include "osp/graphics/access.h"
#include "osp/graphics/bitmap_pixels.h"
#include "osp/graphics/surface.h"
#include "osp/graphics/typeface.h"

namespace Osp::Graphics {

namespace {

double Unit(std::uint8_t channel) {
    return channel / 255.0;
}

void SetSource(cairo_t* context, const Color& color) {
    cairo_set_source_rgba(context, Unit(color.red), Unit(color.green), Unit(color.blue),
                          Unit(color.alpha));
}

}  // namespace

class Canvas::Context {
  public:
    explicit Context(cairo_surface_t* surface) : context_(cairo_create(surface)) {}
    cairo_t* Get() const { return context_.get(); }

  private:
    CairoPointer context_;
};

Canvas::Canvas(std::shared_ptr<Surface> surface)
    : surface_(std::move(surface)), context_(std::make_unique<Context>(surface_->Cairo())) {
    assert(cairo_surface_get_type(surface_->Cairo()) == CAIRO_SURFACE_TYPE_IMAGE);
}

Canvas::~Canvas() = default;

Rectangle Canvas::GetBounds() const {
    const auto [width, height] = surface_->GetDimension();
    return {0, 0, width, height};
}

result Canvas::Clear() {
    return FillRectangle({0, 0, 0, 0}, GetBounds());
}

result Canvas::FillRectangle(const Color& color, const Rectangle& rectangle) {
    cairo_t* const cr = context_->Get();
    cairo_save(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    SetSource(cr, color);
    cairo_rectangle(cr, rectangle.x, rectangle.y, rectangle.width, rectangle.height);
    cairo_fill(cr);
    cairo_restore(cr);
    return result::kSuccess;
}

result Canvas::FillRoundRectangle(const Color& color, const Rectangle& rectangle, int radius) {
    if (rectangle.IsEmpty() || radius < 0) return result::kInvalidArgument;
    constexpr double kQuarter = std::numbers::pi / 2;
    const double left = rectangle.x + radius;
    const double top = rectangle.y + radius;
    const double right = rectangle.x + rectangle.width - radius;
    const double bottom = rectangle.y + rectangle.height - radius;
    cairo_t* const cr = context_->Get();
    SetSource(cr, color);
    cairo_new_path(cr);
    cairo_arc(cr, right, top, radius, -kQuarter, 0);
    cairo_arc(cr, right, bottom, radius, 0, kQuarter);
    cairo_arc(cr, left, bottom, radius, kQuarter, 2 * kQuarter);
    cairo_arc(cr, left, top, radius, 2 * kQuarter, 3 * kQuarter);
    cairo_close_path(cr);
    cairo_fill(cr);
    return result::kSuccess;
}

result Canvas::DrawBitmap(const Point& topLeft, const Bitmap& bitmap) {
    if (Access::Pixels(bitmap) == nullptr) return result::kInvalidArgument;
    cairo_t* const cr = context_->Get();
    cairo_set_source_surface(cr, Access::Pixels(bitmap)->Drawable().Cairo(), topLeft.x, topLeft.y);
    cairo_paint(cr);
    return result::kSuccess;
}

result Canvas::DrawBitmap(const Rectangle& rectangle, const Bitmap& bitmap) {
    if (Access::Pixels(bitmap) == nullptr || rectangle.IsEmpty()) return result::kInvalidArgument;
    if (rectangle.width == bitmap.GetWidth() && rectangle.height == bitmap.GetHeight()) {
        return DrawBitmap(Point{rectangle.x, rectangle.y}, bitmap);
    }
    cairo_t* const cr = context_->Get();
    cairo_save(cr);
    cairo_translate(cr, rectangle.x, rectangle.y);
    cairo_scale(cr, static_cast<double>(rectangle.width) / bitmap.GetWidth(),
                static_cast<double>(rectangle.height) / bitmap.GetHeight());
    cairo_set_source_surface(cr, Access::Pixels(bitmap)->Drawable().Cairo(), 0, 0);
    cairo_paint(cr);
    cairo_restore(cr);
    return result::kSuccess;
}

result Canvas::DrawBitmap(const Point& topLeft, const Bitmap& bitmap, const Rectangle& part) {
    const bool isWithin = part.x >= 0 && part.y >= 0 && part.x <= bitmap.GetWidth() - part.width &&
                          part.y <= bitmap.GetHeight() - part.height;
    if (Access::Pixels(bitmap) == nullptr || part.IsEmpty() || !isWithin) {
        return result::kInvalidArgument;
    }
    cairo_t* const cr = context_->Get();
    cairo_set_source_surface(cr, Access::Pixels(bitmap)->Drawable().Cairo(), topLeft.x - part.x,
                             topLeft.y - part.y);
    cairo_rectangle(cr, topLeft.x, topLeft.y, part.width, part.height);
    cairo_fill(cr);
    return result::kSuccess;
}

result Canvas::SetFont(const Font& font) {
    if (font.GetSize() <= 0) return result::kInvalidArgument;
    font_ = font;
    return result::kSuccess;
}

void Canvas::SetForegroundColor(const Color& color) {
    foreground_ = color;
}

result Canvas::DrawText(const Point& topLeft, const Base::String& text) {
    if (font_.GetSize() <= 0) return result::kInvalidState;
    cairo_t* const cr = context_->Get();
    const LayoutOwner layout = MakeLayout(cr, font_, text);
    SetSource(cr, foreground_);
    cairo_move_to(cr, topLeft.x, topLeft.y);
    pango_cairo_show_layout(cr, layout.get());
    return result::kSuccess;
}

Dimension Canvas::MeasureText(const Base::String& text) {
    if (font_.GetSize() <= 0) return {};
    const LayoutOwner layout = MakeLayout(context_->Get(), font_, text);
    Dimension size;
    pango_layout_get_pixel_size(layout.get(), &size.width, &size.height);
    return size;
}

}  // namespace Osp::Graphics
