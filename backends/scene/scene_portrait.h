// The front camera's built-in scene: somebody in a garden who smiles at the camera.
#pragma once

#include <array>

#include "backends/scene/scene_drawing.h"
#include "osp/graphics/surface.h"

namespace Osp::Media::Scene {

constexpr Graphics::Dimension kPortraitWorld{960, 1600};
/// Their middles; they move, unlike the face.
inline constexpr std::array kPortraitEyes = {Place{396, 716}, Place{564, 716}};

/// All that stands still, upright; fills the surface.
void DrawPortrait(Graphics::Surface& surface, const View& view);
/// What moves, as it is at frame `number`, over a copy of that turned as the front sensor is.
void DrawPortraitMotion(Graphics::Surface& surface, const View& view, long long number);

}  // namespace Osp::Media::Scene
