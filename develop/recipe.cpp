#include "develop/recipe.h"

#include <algorithm>

namespace Kivo::Tools {

Problem CheckSize(const Recipe& recipe, const Osp::Graphics::Dimension& size) {
    if (recipe.type == CameraType::kAction && (recipe.isFront ? size.height : size.width) < 4) {
        return std::string("ACTION takes pictures of at least 4 pixels in ") +
               (recipe.isFront ? "height" : "width");
    }
    if (recipe.type == CameraType::kQuad && std::min(size.width, size.height) < 2) {
        return "QUAD takes pictures of at least 2 x 2 pixels";
    }
    return {};
}

}  // namespace Kivo::Tools
