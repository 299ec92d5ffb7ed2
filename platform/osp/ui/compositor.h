// Puts the pictures of controls together.
#pragma once

#include <cairo.h>
#include <vector>

#include <osp/ui/container.h>

#include "osp/graphics/surface.h"

namespace Osp::Ui {

/// Lets every shown control of the tree draw that has asked for it. The controls must not add to
/// the tree or take from it while they draw.
void DrawPending(Control& root);

/// Paints the trees, bottom to top on black, into `target` inside `damage` only, which is in screen
/// pixels. What a disabled button shows is dimmed here, so that it need not draw itself again.
void Paint(const std::vector<Container*>& roots, cairo_region_t& damage, Graphics::Surface& target);

/// The same for what lies above the outside views alone, which are those of `outside`: transparent
/// elsewhere, so that it can be laid over them.
void PaintAbove(const std::vector<Container*>& roots, const std::vector<const Control*>& outside,
                cairo_region_t& damage, Graphics::Surface& target);

/// Draws the ring of the keyboard's focus just inside the edge of `control`, which so damages all
/// of it; above everything that is there.
void PaintFocus(const Control& control, cairo_region_t& damage, Graphics::Surface& target);

}  // namespace Osp::Ui
