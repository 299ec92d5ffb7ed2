// What a web control draws itself.
#pragma once

#include <string>

#include <osp/graphics/canvas.h>

#include "osp/graphics/surface.h"

namespace Osp::Web {

/// All of the canvas: that no page can be shown, why, and what to do.
result DrawWhyNot(Graphics::Canvas& canvas, const std::string& whyNot);
/// The same in one line.
Base::String TellWhyNot(const std::string& whyNot);

/// `page` all over the control's picture, which `canvas` is on; null for a page that is not there
/// yet.
result DrawPicture(Graphics::Canvas& canvas, Graphics::Surface& picture,
                   const Graphics::Surface* page);

}  // namespace Osp::Web
