// A place on the screen, in pixels.
#pragma once

namespace Osp::Graphics {

struct Point {
    int x = 0;
    int y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

}  // namespace Osp::Graphics
