// Drawing on a control.
#pragma once

#include <memory>

#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/graphics/bitmap.h>
#include <osp/graphics/color.h>
#include <osp/graphics/font.h>
#include <osp/graphics/point.h>
#include <osp/graphics/rectangle.h>

namespace Osp::Graphics {

class Access;
class Surface;

/// Draws into the picture of one control; coordinates are the control's own. What is drawn comes
/// to the screen with the control's next Show or redraw. Loop thread only; not kept across calls.
class Canvas {
  public:
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    /// From 0, 0; in pixels.
    Rectangle GetBounds() const;

    /// Makes everything transparent.
    result Clear();
    /// Replaces the rectangle by the colour, opacity included; what was there does not show
    /// through.
    result FillRectangle(const Color& color, const Rectangle& rectangle);
    /// Fills a rectangle with rounded corners, over what is there. kInvalidArgument for an empty
    /// rectangle or a negative radius.
    result FillRoundRectangle(const Color& color, const Rectangle& rectangle, int radius);

    /// Over what is there, at its own size. kInvalidArgument for an unconstructed bitmap.
    result DrawBitmap(const Point& topLeft, const Bitmap& bitmap);
    /// The same, scaled to the rectangle; kInvalidArgument for an empty one as well.
    result DrawBitmap(const Rectangle& rectangle, const Bitmap& bitmap);

    /// Only `part` of it, at its own size. kInvalidArgument for a part that is empty or not within
    /// the bitmap as well.
    result DrawBitmap(const Point& topLeft, const Bitmap& bitmap, const Rectangle& part);

    /// kInvalidArgument, keeping the font that was set, for one that is not constructed.
    result SetFont(const Font& font);
    void SetForegroundColor(const Color& color);
    /// One line in the font and the foreground colour, its top left at `topLeft`. kInvalidState
    /// before SetFont.
    result DrawText(const Point& topLeft, const Base::String& text);
    /// The size of the box that DrawText would fill, in pixels; 0 x 0 before SetFont.
    Dimension MeasureText(const Base::String& text);

  private:
    friend class Access;
    class Context;

    explicit Canvas(std::shared_ptr<Surface> surface);

    std::shared_ptr<Surface> surface_;
    std::unique_ptr<Context> context_;
    Font font_;
    Color foreground_;
};

}  // namespace Osp::Graphics
