#include "album/album_photo.h"

#include <osp/content/content_manager.h>
#include <osp/content/image_content_info.h>
#include <osp/io/file.h>

#include "album/photo_information.h"

namespace Kivo {

namespace {
constexpr long long kLeastPhotoBytes = 3072;
}

AlbumPhoto ReadPhoto(const Osp::Base::String& path) {
    AlbumPhoto photo;
    photo.path = path;
    photo.isBroken = true;
    Osp::Io::FileAttributes attributes;
    if (Osp::Failed(Osp::Io::File::GetAttributes(path, attributes))) return photo;
    photo.fileSizeBytes = attributes.GetFileSize();
    photo.dateMs = attributes.GetLastModifiedMs();
    if (photo.fileSizeBytes < kLeastPhotoBytes) return photo;

    Osp::Content::ContentManager manager;
    Osp::Content::ImageContentInfo info;
    result r = manager.Construct();
    if (Osp::Succeeded(r)) r = info.Construct(path, "", false);
    if (Osp::Succeeded(r)) r = manager.CreateContent(info);
    if (Osp::Failed(r)) return photo;
    photo.description = info.GetDescription().ToUtf8();
    photo.isHdr = TellsOfHdr(photo.description);
    photo.size = {info.GetWidth(), info.GetHeight()};
    // A picture always tells its size.
    photo.isBroken = photo.size.width <= 0 || photo.size.height <= 0;
    return photo;
}

}  // namespace Kivo
