// The screen's place in a window of any size.
#pragma once

#include <algorithm>
#include <cmath>

#include <osp/graphics/dimension.h>
#include <osp/graphics/point.h>
#include <osp/graphics/rectangle.h>

namespace Osp::Ui {

/// The largest centred area of the screen's shape; coordinates are the window's.
class Letterbox {
  public:
    Letterbox(double windowWidth, double windowHeight, Graphics::Dimension screen)
        : scale_(std::min(windowWidth / screen.width, windowHeight / screen.height)),
          left_((windowWidth - screen.width * scale_) / 2),
          top_((windowHeight - screen.height * scale_) / 2) {}

    /// Pixels of the window for one of the screen.
    double Scale() const { return scale_; }

    /// The screen pixel under a place in the window; outside the screen's area, one beside it.
    Graphics::Point ToScreen(double x, double y) const {
        if (scale_ <= 0) return {-1, -1};
        return {static_cast<int>(std::floor((x - left_) / scale_)),
                static_cast<int>(std::floor((y - top_) / scale_))};
    }

    /// The pixels of the window that show an area of the screen.
    Graphics::Rectangle ToWindow(const Graphics::Rectangle& area) const {
        const auto scaled = [this](int length) { return static_cast<int>(length * scale_); };
        return {static_cast<int>(left_) + scaled(area.x), static_cast<int>(top_) + scaled(area.y),
                scaled(area.width), scaled(area.height)};
    }

  private:
    double scale_;
    double left_;
    double top_;
};

}  // namespace Osp::Ui
