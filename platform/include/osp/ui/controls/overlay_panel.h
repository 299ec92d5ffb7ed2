// Controls over moving pictures.
#pragma once

#include <memory>

#include <osp/base/byte_buffer.h>
#include <osp/graphics/dimension.h>
#include <osp/ui/container.h>

namespace Osp::Ui::Controls {

/// How the picture is turned on its way to the screen.
enum class RendererRotation { kNone = 0, kQuarterTurn = 6 };

/// 2: YUV 4:2:0 planar: luma, then both chroma planes at half size.
enum class BufferPixelFormat { kYuv420Planar = 2 };

/// A container whose ground is a moving picture. Loop thread only.
class OverlayPanel : public Container {
  public:
    OverlayPanel();
    ~OverlayPanel() override;

    /// kInvalidArgument for an empty rectangle.
    result Construct(const Graphics::Rectangle& bounds);

    /// For the pictures that follow; a quarter turn is clockwise.
    result SetRendererRotation(RendererRotation rotation);
    /// Shows a picture of `source` size, turned and scaled to `display` and centred on black, below
    /// the panel's own drawing. Copies what it needs and keeps the last picture. kInvalidArgument,
    /// keeping the picture that was there, when the buffer is smaller than the format says or a
    /// side of `source` or `display` is odd or not positive. `buffer` stays the caller's.
    result SetInputBuffer(const Graphics::Dimension& display, const Base::ByteBuffer& buffer,
                          const Graphics::Dimension& source, BufferPixelFormat format);

  private:
    friend class Osp::Ui::Access;
    class Video;

    RendererRotation rotation_ = RendererRotation::kNone;
    std::unique_ptr<Video> video_;
};

}  // namespace Osp::Ui::Controls
