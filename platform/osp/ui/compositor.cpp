// Drawing and painting are two passes: DrawPending lets controls bring their own pictures up to
// date, which may damage more of the screen; Paint only puts pictures together and calls nothing of
// the application's, so neither the tree nor the damage changes under it.
//
// Inside the damage everything is painted anew from black upwards; outside, the screen keeps what
// it had. That is right only because every change that shows damages the control's area, before and
// after when it moves. A control outside the damage is skipped, but not what it holds: children are
// not clipped to their parent. They should lie inside it all the same, because moving or hiding the
// parent damages no more than the parent's own area.
#include "osp/ui/compositor.h"

#include <algorithm>
#include <numbers>

#include <osp/ui/controls/button.h>
#include <osp/ui/controls/overlay_panel.h>
#include <osp/ui/controls/popup.h>

#include "osp/ui/access.h"

namespace Osp::Ui {

namespace {

constexpr double kDisabledOpacity = 0.45;
constexpr double kScrimOpacity = 0.6;  // of black, below a popup

constexpr double kRingWidth = 3;
constexpr double kRingLine = 1.5;  // of ink, on either side
constexpr double kRingInset = kRingWidth / 2 + kRingLine;
constexpr double kRingRadius = 16;

void PaintVideo(cairo_t* context, const Controls::OverlayPanel& panel,
                const Graphics::Rectangle& area) {
    const Graphics::Surface* const video = Access::VideoPicture(panel);
    if (video == nullptr) return;
    const Graphics::Point place = Access::VideoPlace(panel);
    const auto [width, height] = video->GetDimension();
    cairo_save(context);
    cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
    if (Graphics::Dimension{width, height} != area.Size()) {
        cairo_set_source_rgb(context, 0, 0, 0);
        cairo_rectangle(context, area.x, area.y, area.width, area.height);
        cairo_fill(context);
    }
    cairo_set_source_surface(context, video->Cairo(), area.x + place.x, area.y + place.y);
    cairo_rectangle(context, area.x + place.x, area.y + place.y, width, height);
    cairo_fill(context);
    cairo_restore(context);
}

void PaintControl(cairo_t* context, const Control& control, const Graphics::Rectangle& area) {
    if (const auto* panel = dynamic_cast<const Controls::OverlayPanel*>(&control)) {
        PaintVideo(context, *panel, area);
    }
    const auto& picture = Access::Picture(control);
    if (!picture) return;
    cairo_set_source_surface(context, picture->Cairo(), area.x, area.y);
    const bool isDimmed = !control.IsEnabled() && dynamic_cast<const Controls::Button*>(&control);
    cairo_paint_with_alpha(context, isDimmed ? kDisabledOpacity : 1.0);
}

/// Goes through the trees from bottom to top.
struct Painter {
    cairo_t* context;
    const cairo_region_t& damage;
    const std::vector<const Control*>& outside;  // which are never painted
    bool paints;                                 // from the first of those on, if not before

    void PaintRoots(const std::vector<Container*>& roots) {
        for (const Container* root : roots) {
            if (paints && dynamic_cast<const Controls::Popup*>(root) != nullptr) {
                cairo_set_source_rgba(context, 0, 0, 0, kScrimOpacity);
                cairo_paint(context);
            }
            PaintTree(*root, {});
        }
    }

    void PaintTree(const Control& control, Graphics::Point parent) {
        if (!control.GetShowState()) return;
        const Graphics::Rectangle area = control.GetBounds().MovedBy(parent.x, parent.y);
        if (std::ranges::count(outside, &control) != 0) {
            paints = true;
        } else if (paints && IsTouched(area)) {
            PaintControl(context, control, area);
        }
        const auto* const container = dynamic_cast<const Container*>(&control);
        if (container == nullptr) return;
        for (const auto& child : Access::Children(*container)) PaintTree(*child, {area.x, area.y});
    }

    bool IsTouched(const Graphics::Rectangle& area) const {
        const cairo_rectangle_int_t rectangle{area.x, area.y, area.width, area.height};
        return cairo_region_contains_rectangle(&damage, &rectangle) != CAIRO_REGION_OVERLAP_OUT;
    }
};

Graphics::CairoPointer ClippedTo(cairo_region_t& damage, Graphics::Surface& target) {
    Graphics::CairoPointer context(cairo_create(target.Cairo()));
    for (int i = 0; i < cairo_region_num_rectangles(&damage); ++i) {
        cairo_rectangle_int_t r;
        cairo_region_get_rectangle(&damage, i, &r);
        cairo_rectangle(context.get(), r.x, r.y, r.width, r.height);
    }
    cairo_clip(context.get());  // to nothing when nothing is damaged
    return context;
}

}  // namespace

void DrawPending(Control& root) {
    if (!root.GetShowState()) return;
    Access::DrawIfNeeded(root);
    const auto* const container = dynamic_cast<Container*>(&root);
    if (container == nullptr) return;
    for (const auto& child : Access::Children(*container)) DrawPending(*child);
}

void Paint(const std::vector<Container*>& roots, cairo_region_t& damage,
           Graphics::Surface& target) {
    const Graphics::CairoPointer context = ClippedTo(damage, target);
    cairo_set_source_rgb(context.get(), 0, 0, 0);
    cairo_paint(context.get());
    Painter{context.get(), damage, {}, true}.PaintRoots(roots);
}

void PaintAbove(const std::vector<Container*>& roots, const std::vector<const Control*>& outside,
                cairo_region_t& damage, Graphics::Surface& target) {
    const Graphics::CairoPointer context = ClippedTo(damage, target);
    cairo_set_operator(context.get(), CAIRO_OPERATOR_CLEAR);
    cairo_paint(context.get());
    cairo_set_operator(context.get(), CAIRO_OPERATOR_OVER);
    Painter{context.get(), damage, outside, false}.PaintRoots(roots);
}

void PaintFocus(const Control& control, cairo_region_t& damage, Graphics::Surface& target) {
    if (!control.IsVisible()) return;
    const Graphics::CairoPointer context = ClippedTo(damage, target);
    cairo_t* const cr = context.get();
    const auto [x, y, width, height] = control.GetScreenBounds();
    const double radius = std::min({kRingRadius, width / 2.0, height / 2.0}) - kRingInset;
    const auto corner = [&](double cx, double cy, int quarter) {
        constexpr double kQuarter = std::numbers::pi / 2;
        cairo_arc(cr, cx, cy, radius, quarter * kQuarter, (quarter + 1) * kQuarter);
    };
    const double inset = kRingInset + radius;
    corner(x + width - inset, y + height - inset, 0);
    corner(x + inset, y + height - inset, 1);
    corner(x + inset, y + inset, 2);
    corner(x + width - inset, y + inset, 3);
    cairo_close_path(cr);
    // The ink on both sides makes the amber visible on any ground.
    cairo_set_source_rgb(cr, 0x1C / 255.0, 0x1A / 255.0, 0x17 / 255.0);
    cairo_set_line_width(cr, kRingWidth + 2 * kRingLine);
    cairo_stroke_preserve(cr);
    cairo_set_source_rgb(cr, 0xFF / 255.0, 0xB9 / 255.0, 0x38 / 255.0);
    cairo_set_line_width(cr, kRingWidth);
    cairo_stroke(cr);
}

}  // namespace Osp::Ui
