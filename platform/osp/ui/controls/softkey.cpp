#include "osp/ui/controls/softkey.h"

#include <memory>
#include <numbers>

#include "osp/graphics/surface.h"
#include "osp/ui/access.h"
#include "osp/ui/screen.h"

namespace Osp::Ui {

namespace {

constexpr Graphics::Dimension kSize{132, 52};
constexpr int kMargin = 8;
constexpr Graphics::Rectangle kBounds[] = {
    {kMargin, Screen::kSize.height - kMargin - kSize.height, kSize.width, kSize.height},
    {Screen::kSize.width - kMargin - kSize.width, Screen::kSize.height - kMargin - kSize.height,
     kSize.width, kSize.height},
};
constexpr Graphics::Color kInk{0x1C, 0x1A, 0x17, 255};
constexpr Graphics::Color kCream{0xFA, 0xF5, 0xEA, 255};
constexpr double kInset = 2;
constexpr double kRimWidth = 2;
constexpr double kInkOpacity = 0.88;
constexpr double kRimOpacity = 0.5;

void SetSource(cairo_t* context, const Graphics::Color& color, double opacity) {
    cairo_set_source_rgba(context, color.red / 255.0, color.green / 255.0, color.blue / 255.0,
                          opacity);
}

void AddPill(cairo_t* context) {
    constexpr double kRadius = kSize.height / 2.0 - kInset;
    constexpr double kQuarter = std::numbers::pi / 2;
    const double middle = kSize.height / 2.0;
    cairo_arc(context, kInset + kRadius, middle, kRadius, kQuarter, 3 * kQuarter);
    cairo_arc(context, kSize.width - kInset - kRadius, middle, kRadius, -kQuarter, kQuarter);
    cairo_close_path(context);
}

}  // namespace

Softkey::Softkey(Controls::SoftkeyPosition position) {
    (void)Construct(kBounds[static_cast<int>(position)]);
    (void)SetShowState(false);
}

result Softkey::OnDraw() {
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    const result r = canvas->Clear();
    if (Failed(r)) return r;
    const Graphics::CairoPointer context(cairo_create(Access::Picture(*this)->Cairo()));
    AddPill(context.get());
    SetSource(context.get(), IsPressed() ? kCream : kInk, IsPressed() ? 1 : kInkOpacity);
    cairo_fill_preserve(context.get());
    SetSource(context.get(), kCream, kRimOpacity);
    cairo_set_line_width(context.get(), kRimWidth);
    cairo_stroke(context.get());
    return DrawText(*canvas, IsPressed() ? kInk : kCream);
}

}  // namespace Osp::Ui
