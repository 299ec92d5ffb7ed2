// All that the camera can make of one picture, on one page.
#pragma once

#include <span>
#include <string>

#include "develop/pictures/picture_files.h"
#include "develop/recipe.h"

namespace Kivo::Tools {

/// Develops the pictures, one to four, with every type and every effect, six films of ten frames.
/// Of `recipe`, HDR and camera count.
Outcome MakeContactSheet(const Recipe& recipe, std::span<const std::string> inputs,
                         const std::string& output);

}  // namespace Kivo::Tools
