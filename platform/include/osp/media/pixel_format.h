// How a camera lays out the pictures it delivers.
#pragma once

namespace Osp::Media {

enum class PixelFormat {
    /// Planes without gaps: width x height of Y, then width/2 x height/2 of Cb, then as much of Cr.
    kYuv420Planar = 4,
    kJpeg = 5,  ///< one encoded picture
};

}  // namespace Osp::Media
