// From what a camera has drawn to what it delivers.
#pragma once

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>
#include <osp/graphics/dimension.h>
#include <osp/media/camera_selection.h>

#include "osp/graphics/surface.h"
#include "osp/media/camera/white_balance.h"
#include "osp/media/picture/pixel_view.h"

/// Any thread.
namespace Osp::Media {

/// The size that an upright subject has for a camera whose pictures have `size`. The front sensor
/// is mounted a quarter turn: its pictures are upright once they are turned clockwise.
constexpr Graphics::Dimension UprightSize(const Graphics::Dimension& size,
                                          CameraSelection selection) {
    if (selection == CameraSelection::kSecondary) return {size.height, size.width};
    return size;
}

/// Draws the middle of an upright kBgrx picture so that it fills `target`, magnified and turned as
/// the camera would see it.
void DrawToFill(const PixelView& picture, int zoomStep, CameraSelection selection,
                Graphics::Surface& target);

/// Fills `frame`, which has I420Bytes of the picture's size.
void WriteFrame(const Graphics::Surface& picture, const ColorGains& gains, Base::ByteBuffer& frame);

/// Constructs `jpeg` with the encoded picture, whose own colours change.
result WriteStill(Graphics::Surface& picture, const ColorGains& gains, Base::ByteBuffer& jpeg);

}  // namespace Osp::Media
