// How a photograph is to be developed.
#pragma once

#include <osp/graphics/dimension.h>

#include "app/model/camera_types.h"
#include "develop/problem.h"

namespace Kivo::Tools {

struct Recipe {
    CameraType type = CameraType::kKivo;
    PhotoEffect effect = PhotoEffect::kNormal;
    bool hdr = false;
    bool isFront = false;  // as the front camera would have taken it, which stores turned
};

/// Whether pictures of this size have room for the strips or quadrants of the type.
Problem CheckSize(const Recipe& recipe, const Osp::Graphics::Dimension& size);

}  // namespace Kivo::Tools
