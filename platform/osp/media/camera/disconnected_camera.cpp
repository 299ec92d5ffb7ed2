#include "osp/media/camera/disconnected_camera.h"

#include <algorithm>

#include <osp/graphics/canvas.h>

#include "osp/graphics/access.h"
#include "osp/graphics/surface.h"
#include "osp/media/camera/camera_pictures.h"
#include "osp/media/camera/i420.h"

namespace Osp::Media {

namespace {

using Graphics::Dimension;
using Graphics::Surface;

constexpr Graphics::Color kGround{24, 27, 31};
constexpr Graphics::Color kText{236, 238, 240};
constexpr int kTextHeightDivisor = 12;  // of the shorter side

std::shared_ptr<Surface> DrawMessage(const Dimension& size) {
    auto surface = std::make_shared<Surface>(size, Surface::Kind::kOpaque);
    Graphics::Canvas canvas = Graphics::Access::MakeCanvas(surface);
    (void)canvas.FillRectangle(kGround, canvas.GetBounds());
    Graphics::Font font;
    const int side = std::min(size.width, size.height);
    if (Failed(font.Construct(Graphics::kFontStylePlain, side / kTextHeightDivisor)) ||
        Failed(canvas.SetFont(font))) {
        return surface;
    }
    canvas.SetForegroundColor(kText);
    const Base::String text("Camera disconnected");
    const Dimension box = canvas.MeasureText(text);
    (void)canvas.DrawText({(size.width - box.width) / 2, (size.height - box.height) / 2}, text);
    return surface;
}

}  // namespace

DisconnectedCamera::DisconnectedCamera(CameraSelection selection)
    : GeneratedCamera("disconnected", selection) {}

// Drawn here and not in the job, because a canvas belongs to the loop thread; once for all frames.
GeneratedCamera::FrameJob DisconnectedCamera::MakeFrameJob(const StreamSettings& settings,
                                                           long long) {
    if (frame_ == nullptr || frameSize_ != settings.previewSize) {
        const std::shared_ptr<Surface> upright =
            DrawMessage(UprightSize(settings.previewSize, Selection()));
        Surface picture(settings.previewSize, Surface::Kind::kOpaque);
        const PixelView message =
            PackedView(upright->Data(), upright->GetDimension(), PixelLayout::kBgrx);
        DrawToFill(message, 0, Selection(), picture);
        const auto frame = std::make_shared<Base::ByteBuffer>();
        if (Succeeded(frame->Construct(static_cast<int>(I420Bytes(settings.previewSize))))) {
            WriteFrame(picture, {}, *frame);
        }
        frame_ = frame;
        frameSize_ = settings.previewSize;
    }
    return [frame = frame_](Base::ByteBuffer& target) {
        std::ranges::copy(frame->Bytes(), target.GetPointer());
    };
}

GeneratedCamera::StillJob DisconnectedCamera::MakeStillJob(const StreamSettings&, long long) {
    return {[](Base::ByteBuffer&) { return result::kObjectNotFound; }, nullptr};
}

}  // namespace Osp::Media
