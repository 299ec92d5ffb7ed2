// A size in pixels.
#pragma once

namespace Osp::Graphics {

struct Dimension {
    int width = 0;
    int height = 0;

    friend bool operator==(const Dimension&, const Dimension&) = default;
};

}  // namespace Osp::Graphics
