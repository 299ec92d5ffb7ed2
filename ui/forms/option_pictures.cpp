#include "ui/forms/option_pictures.h"

#include <cstddef>

#include "ui/forms/carousel.h"
#include "ui/load_picture.h"

namespace Kivo {

namespace {

constexpr const char* kCameras[] = {"/Res/option_cam_kivo.png",   "/Res/option_cam_dslr.png",
                                    "/Res/option_cam_action.png", "/Res/option_cam_quad.png",
                                    "/Res/option_cam_mix.png",    "/Res/option_cam_ts.png"};

constexpr const char* kEffects[] = {"/Res/option_eff_normal.png",  "/Res/option_eff_fisheye.png",
                                    "/Res/option_eff_concave.png", "/Res/option_eff_bw.png",
                                    "/Res/option_eff_beach.png",   "/Res/option_eff_fall.png",
                                    "/Res/option_eff_sepia.png",   "/Res/option_eff_negative.png",
                                    "/Res/option_eff_edge.png",    "/Res/option_eff_mirror.png"};

constexpr const char* kRestrictedEffects[] = {
    "/Res/option_eff_normal.png",      "/Res/option_eff_fisheye_dim.png",
    "/Res/option_eff_concave_dim.png", "/Res/option_eff_bw.png",
    "/Res/option_eff_beach.png",       "/Res/option_eff_fall.png",
    "/Res/option_eff_sepia.png",       "/Res/option_eff_negative.png",
    "/Res/option_eff_edge.png",        "/Res/option_eff_mirror_dim.png"};

static_assert(std::size(kCameras) == kCameraTypeNames.size());
static_assert(std::size(kEffects) == kPhotoEffectNames.size());
static_assert(std::size(kRestrictedEffects) == kPhotoEffectNames.size());

template <std::size_t count>
result LoadRow(Osp::Media::Image& decoder, const char* const (&paths)[count],
               const Carousel& carousel, std::vector<ScaledPicture>& row) {
    for (const char* path : paths) {
        Osp::Graphics::Bitmap bitmap;
        const result r = LoadPicture(decoder, path, bitmap);
        if (Osp::Failed(r)) return r;
        row.emplace_back(bitmap, carousel.side);
    }
    return result::kSuccess;
}

/// A number that the row does not have counts as its first.
template <class Enum>
ScaledPicture& At(std::vector<ScaledPicture>& row, Enum value, int offset) {
    const auto count = static_cast<int>(row.size());
    const int number = static_cast<int>(value) < count ? static_cast<int>(value) : 0;
    return row[static_cast<std::size_t>((number + offset + count) % count)];
}

}  // namespace

result OptionPictures::Load(Osp::Media::Image& decoder) {
    result r = LoadPicture(decoder, "/Res/bg.png", ground_);
    if (Osp::Failed(r)) return r;
    r = LoadRow(decoder, kCameras, kCameraCarousel, cameras_);
    if (Osp::Failed(r)) return r;
    r = LoadRow(decoder, kEffects, kEffectCarousel, effects_);
    if (Osp::Failed(r)) return r;
    r = LoadRow(decoder, kRestrictedEffects, kEffectCarousel, restrictedEffects_);
    if (Osp::Failed(r)) return r;
    r = LoadPicture(decoder, "/Res/capture_small.png", return_);
    if (Osp::Failed(r)) return r;
    r = LoadPicture(decoder, "/Res/capture_small_down.png", returnPressed_);
    if (Osp::Failed(r)) return r;
    return LoadPicture(decoder, "/Res/down_arrow.png", arrow_);
}

ScaledPicture& OptionPictures::Camera(CameraType type, int offset) {
    return At(cameras_, type, offset);
}

ScaledPicture& OptionPictures::Effect(CameraType type, PhotoEffect effect, int offset) {
    return At(OffersAllEffects(type) ? effects_ : restrictedEffects_, effect, offset);
}

}  // namespace Kivo
