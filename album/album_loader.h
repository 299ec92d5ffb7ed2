// Pictures of the album, decoded before they are asked for.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include <osp/media/image.h>
#include <osp/media/image_decoder.h>

#include "album/album_photo.h"

namespace Kivo {

/// Keeps the pictures of two photographs at most, the neighbours of the one that is shown. Loop
/// thread only.
class AlbumLoader : public Osp::Media::IImageDecoderListener {
  public:
    result Construct();

    /// Reads and decodes a photograph, or takes what has been decoded ahead if the file has not
    /// changed since. `bitmap` is left unconstructed where the photograph is broken.
    AlbumPhoto Load(const Osp::Base::String& path, Osp::Graphics::Bitmap& bitmap);
    /// Begins to decode these ahead, and forgets what had been for others. At most two.
    void Prepare(const std::vector<Osp::Base::String>& paths);
    /// Keeps a photograph that has been shown, in case it is wanted again.
    void Keep(const AlbumPhoto& photo, const Osp::Graphics::Bitmap& bitmap);
    /// Forgets everything.
    void Clear();

    void OnImageDecodedN(const Osp::Base::String& path, Osp::Graphics::Bitmap* bitmap,
                         result r) override;

  private:
    struct Ahead {
        AlbumPhoto photo;              // with an empty path: none
        Osp::Graphics::Bitmap bitmap;  // unconstructed while it is being decoded
    };

    Ahead* Find(const Osp::Base::String& path);

    Osp::Media::Image image_;
    Osp::Media::ImageDecoder decoder_;
    std::vector<Ahead> ahead_;
};

}  // namespace Kivo
