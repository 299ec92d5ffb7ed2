// Textures over recycled memory.
#pragma once

#include <gtk/gtk.h>

#include "osp/graphics/surface.h"

namespace Osp::Ui {

/// Whether the fourth byte of a picture means anything.
enum class Opacity { kOpaque, kAsIs };

/// A texture with a copy of `picture`, whose memory goes back to the pool when the last holder lets
/// go of it: the compositor keeps one or two, so a few blocks go round. The caller owns it.
GdkTexture* MakeTexture(const Graphics::Surface& picture, Opacity opacity);

}  // namespace Osp::Ui
