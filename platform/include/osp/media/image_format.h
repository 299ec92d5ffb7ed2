// File formats of pictures.
#pragma once

namespace Osp::Media {

enum class ImageFormat {
    kJpeg = 0,
    kPng = 1,
    kBmp = 3,  ///< 24 bits a pixel: a header of 54 bytes, then rows bottom to top of B, G, R
};

}  // namespace Osp::Media
