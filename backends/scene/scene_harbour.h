// The back camera's built-in scene: a beach by a harbour on a summer's day.
#pragma once

#include "backends/scene/scene_drawing.h"
#include "osp/graphics/surface.h"

namespace Osp::Media::Scene {

constexpr Graphics::Dimension kHarbourWorld{1600, 960};

/// All that stands still; fills the surface.
void DrawHarbour(Graphics::Surface& surface, const View& view);
/// What moves, as it is at frame `number`, over a copy of that.
void DrawHarbourMotion(Graphics::Surface& surface, const View& view, long long number);

}  // namespace Osp::Media::Scene
