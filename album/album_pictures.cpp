#include "album/album_pictures.h"

#include "ui/load_picture.h"

namespace Kivo {

using Osp::Graphics::Bitmap;

namespace {

constexpr Osp::Graphics::Dimension kBadgeSize{45, 45};

constexpr struct {
    Bitmap AlbumPictures::*picture;
    const char* path;
} kResources[] = {
    {&AlbumPictures::ground, "/Res/album_bg.png"},
    {&AlbumPictures::portraitFrame, "/Res/album_frame.png"},
    {&AlbumPictures::wideFrame, "/Res/album_frame_w.png"},
    {&AlbumPictures::broken, "/Res/album_broken.png"},
    {&AlbumPictures::empty, "/Res/album_empty.png"},
    {&AlbumPictures::hdrBadge, "/Res/hdr.png"},
    {&AlbumPictures::sharedBadge, "/Res/shared.png"},
    {&AlbumPictures::back, "/Res/capture_small.png"},
    {&AlbumPictures::backDown, "/Res/capture_small_down.png"},
    {&AlbumPictures::share, "/Res/album_list.png"},
    {&AlbumPictures::shareDown, "/Res/album_list_down.png"},
    {&AlbumPictures::wall, "/Res/album_walls_n.png"},
    {&AlbumPictures::wallDown, "/Res/album_walls_p.png"},
    {&AlbumPictures::trash, "/Res/album_trash.png"},
    {&AlbumPictures::trashDown, "/Res/album_trash_down.png"},
    {&AlbumPictures::twitter, "/Res/ico_twitter.png"},
    {&AlbumPictures::facebook, "/Res/ico_facebook.png"},
    {&AlbumPictures::mail, "/Res/ico_mail.png"},
};

}  // namespace

result AlbumPictures::Load(Osp::Media::Image& decoder) {
    for (const auto& resource : kResources) {
        const result r = LoadPicture(decoder, resource.path, this->*resource.picture);
        if (Osp::Failed(r)) return r;
    }
    // As buttons of the camera screen they are larger.
    for (Bitmap* badge : {&hdrBadge, &sharedBadge}) {
        const Bitmap button = *badge;
        const result r = badge->Construct(button, kBadgeSize);
        if (Osp::Failed(r)) return r;
    }
    return result::kSuccess;
}

}  // namespace Kivo
