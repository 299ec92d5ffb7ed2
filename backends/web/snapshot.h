// What a view shows, as a picture.
#pragma once

#include <functional>
#include <memory>
#include <webkit/webkit.h>

#include <osp/graphics/dimension.h>

#include "osp/graphics/surface.h"

namespace Osp::Web {

/// Calls `taken` from the loop, with a picture of `size`, or with null when the view cannot give
/// one within a few seconds. The view may end meanwhile.
void TakeSnapshot(WebKitWebView* view, Graphics::Dimension size,
                  std::function<void(std::shared_ptr<Graphics::Surface>)> taken);

}  // namespace Osp::Web
