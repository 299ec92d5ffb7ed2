// The bitmaps of the album.
#pragma once

#include <osp/base/result.h>
#include <osp/graphics/bitmap.h>
#include <osp/media/image.h>

namespace Kivo {

struct AlbumPictures {
    Osp::Graphics::Bitmap ground;
    Osp::Graphics::Bitmap portraitFrame;
    Osp::Graphics::Bitmap wideFrame;
    Osp::Graphics::Bitmap broken;
    Osp::Graphics::Bitmap empty;
    Osp::Graphics::Bitmap hdrBadge;
    Osp::Graphics::Bitmap sharedBadge;
    Osp::Graphics::Bitmap back;
    Osp::Graphics::Bitmap backDown;
    Osp::Graphics::Bitmap share;
    Osp::Graphics::Bitmap shareDown;
    Osp::Graphics::Bitmap wall;
    Osp::Graphics::Bitmap wallDown;
    Osp::Graphics::Bitmap trash;
    Osp::Graphics::Bitmap trashDown;
    Osp::Graphics::Bitmap twitter;
    Osp::Graphics::Bitmap facebook;
    Osp::Graphics::Bitmap mail;

    /// Decodes them all; the first failure is returned.
    result Load(Osp::Media::Image& decoder);
};

}  // namespace Kivo
