// A picture that is not ready when it is wanted is decoded on the spot: that takes no longer than
// waiting for the worker, which may have only just begun, and the worker's picture is then dropped.
// What was decoded ahead counts only for the very file that is there when it is wanted, by size and
// date: other programs may have written to it, or taken it away.
#include "album/album_loader.h"

#include <algorithm>
#include <utility>

#include "album/album_layout.h"

namespace Kivo {

using Osp::Base::String;
using Osp::Graphics::Bitmap;

result AlbumLoader::Construct() {
    const result r = image_.Construct();
    return Osp::Failed(r) ? r : decoder_.Construct(*this);
}

AlbumPhoto AlbumLoader::Load(const String& path, Bitmap& bitmap) {
    AlbumPhoto photo = ReadPhoto(path);
    bitmap = Bitmap();
    if (photo.isBroken) return photo;
    const Ahead* const ahead = Find(path);
    if (ahead != nullptr && ahead->photo.IsSameFileAs(photo)) bitmap = ahead->bitmap;
    if (bitmap.GetWidth() > 0) return photo;
    const auto [width, height] = AlbumLayout::BoundsFor(photo.size);
    const std::unique_ptr<Bitmap> decoded(
        image_.DecodeN(path, Osp::Media::kDecodedPixelFormatArgb, width, height));
    photo.isBroken = decoded == nullptr;
    if (decoded) bitmap = *decoded;
    return photo;
}

void AlbumLoader::Prepare(const std::vector<String>& paths) {
    std::erase_if(ahead_, [&](const Ahead& a) { return !std::ranges::count(paths, a.photo.path); });
    for (const String& path : paths) {
        if (Find(path) != nullptr) continue;
        AlbumPhoto photo = ReadPhoto(path);
        if (photo.isBroken) continue;
        const auto bounds = AlbumLayout::BoundsFor(photo.size);
        ahead_.push_back({std::move(photo), Bitmap()});
        // Without it, the picture is decoded when it is wanted.
        (void)decoder_.Start(path, bounds);
    }
}

void AlbumLoader::Keep(const AlbumPhoto& photo, const Bitmap& bitmap) {
    if (photo.isBroken || photo.path.IsEmpty() || Find(photo.path) != nullptr) return;
    ahead_.push_back({photo, bitmap});
}

void AlbumLoader::Clear() {
    (void)decoder_.Cancel();
    ahead_.clear();
}

void AlbumLoader::OnImageDecodedN(const String& path, Bitmap* bitmap, result) {
    const std::unique_ptr<Bitmap> decoded(bitmap);
    Ahead* const ahead = Find(path);
    if (ahead != nullptr && decoded) ahead->bitmap = *decoded;
}

AlbumLoader::Ahead* AlbumLoader::Find(const String& path) {
    const auto found =
        std::ranges::find_if(ahead_, [&](const Ahead& a) { return a.photo.path == path; });
    return found == ahead_.end() ? nullptr : &*found;
}

}  // namespace Kivo
