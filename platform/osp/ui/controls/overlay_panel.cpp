// The order is turn, scale, convert: the first two are cheaper on planes than on pixels of four
// bytes, and the quarter turn comes first because `display` is what stands on the screen. libyuv
// and Cairo agree on the pixels (B, G, R, X in memory), so the picture needs no further pass.
#include <cassert>
#include <libyuv/convert_argb.h>
#include <libyuv/rotate.h>
#include <libyuv/scale.h>
#include <utility>

#include <osp/ui/controls/overlay_panel.h>

#include "osp/base/values/block_pool.h"
#include "osp/ui/access.h"

namespace Osp::Ui::Controls {

namespace {

/// Three planes of one YUV 4:2:0 picture in a row.
struct Planes {
    Graphics::Dimension size;
    const std::uint8_t* y;

    int ChromaWidth() const { return size.width / 2; }
    const std::uint8_t* First() const { return y + size.width * size.height; }
    const std::uint8_t* Second() const { return First() + ChromaWidth() * (size.height / 2); }
    static std::size_t Bytes(Graphics::Dimension size) {
        return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 3 / 2;
    }
};

bool IsEvenAndPositive(Graphics::Dimension d) {
    return d.width > 0 && d.height > 0 && d.width % 2 == 0 && d.height % 2 == 0;
}

Planes Turned(const Planes& from, Base::Block& memory) {
    memory = Base::Block(Planes::Bytes(from.size));
    const Planes to{{from.size.height, from.size.width}, memory.data()};
    libyuv::I420Rotate(from.y, from.size.width, from.First(), from.ChromaWidth(), from.Second(),
                       from.ChromaWidth(), memory.data(), to.size.width,
                       const_cast<std::uint8_t*>(to.First()), to.ChromaWidth(),
                       const_cast<std::uint8_t*>(to.Second()), to.ChromaWidth(), from.size.width,
                       from.size.height, libyuv::kRotate90);
    return to;
}

Planes Scaled(const Planes& from, Graphics::Dimension size, Base::Block& memory) {
    memory = Base::Block(Planes::Bytes(size));
    const Planes to{size, memory.data()};
    libyuv::I420Scale(from.y, from.size.width, from.First(), from.ChromaWidth(), from.Second(),
                      from.ChromaWidth(), from.size.width, from.size.height, memory.data(),
                      size.width, const_cast<std::uint8_t*>(to.First()), to.ChromaWidth(),
                      const_cast<std::uint8_t*>(to.Second()), to.ChromaWidth(), size.width,
                      size.height, libyuv::kFilterBilinear);
    return to;
}

}  // namespace

class OverlayPanel::Video {
  public:
    explicit Video(Graphics::Dimension size) : surface_(size, Graphics::Surface::Kind::kOpaque) {}

    const Graphics::Surface& Picture() const { return surface_; }

    void Show(const Planes& planes) {
        libyuv::I420ToARGB(planes.y, planes.size.width, planes.First(), planes.ChromaWidth(),
                           planes.Second(), planes.ChromaWidth(), surface_.Data(),
                           surface_.StrideBytes(), planes.size.width, planes.size.height);
        surface_.MarkDirty();
    }

  private:
    Graphics::Surface surface_;
};

OverlayPanel::OverlayPanel() = default;
OverlayPanel::~OverlayPanel() = default;

result OverlayPanel::Construct(const Graphics::Rectangle& bounds) {
    if (bounds.IsEmpty()) return result::kInvalidArgument;
    SetBounds(bounds);
    return result::kSuccess;
}

result OverlayPanel::SetRendererRotation(RendererRotation rotation) {
    rotation_ = rotation;
    return result::kSuccess;
}

result OverlayPanel::SetInputBuffer(const Graphics::Dimension& display,
                                    const Base::ByteBuffer& buffer,
                                    const Graphics::Dimension& source, BufferPixelFormat format) {
    if (format != BufferPixelFormat::kYuv420Planar || !IsEvenAndPositive(source) ||
        !IsEvenAndPositive(display) || buffer.Bytes().size() < Planes::Bytes(source)) {
        return result::kInvalidArgument;
    }
    Planes planes{source, buffer.GetPointer()};
    Base::Block turned;
    Base::Block scaled;
    if (rotation_ == RendererRotation::kQuarterTurn) planes = Turned(planes, turned);
    if (planes.size != display) planes = Scaled(planes, display, scaled);
    if (!video_ || video_->Picture().GetDimension() != display) {
        video_ = std::make_unique<Video>(display);
    }
    video_->Show(planes);
    Invalidate();
    return result::kSuccess;
}

}  // namespace Osp::Ui::Controls

namespace Osp::Ui {

const Graphics::Surface* Access::VideoPicture(const Controls::OverlayPanel& panel) {
    return panel.video_ ? &panel.video_->Picture() : nullptr;
}

Graphics::Point Access::VideoPlace(const Controls::OverlayPanel& panel) {
    assert(panel.video_);
    const Graphics::Dimension size = panel.video_->Picture().GetDimension();
    const Graphics::Rectangle& bounds = panel.GetBounds();
    return {(bounds.width - size.width) / 2, (bounds.height - size.height) / 2};
}

}  // namespace Osp::Ui
