#include "ui/overlay_pictures.h"

#include "ui/load_picture.h"

namespace Kivo {

namespace {

constexpr std::array<const char*, kOverlayPictureCount> kResources{
    "/Res/logo.png",
    "/Res/capture.png",
    "/Res/capture_down.png",
    "/Res/capture_quad_0.png",
    "/Res/capture_quad_1.png",
    "/Res/capture_quad_2.png",
    "/Res/capture_quad_3.png",
    "/Res/capture_quad_4.png",
    "/Res/capture_act_0.png",
    "/Res/capture_act_1.png",
    "/Res/capture_act_2.png",
    "/Res/capture_act_3.png",
    "/Res/capture_act_4.png",
    "/Res/capture_mix_0.png",
    "/Res/capture_mix_1.png",
    "/Res/capture_mix_2.png",
    "/Res/camera_kivo.png",
    "/Res/camera_dslr.png",
    "/Res/camera_action.png",
    "/Res/camera_quad.png",
    "/Res/camera_mix.png",
    "/Res/camera_ts.png",
    "/Res/camsel.png",
    "/Res/camsel_p.png",
    "/Res/album.png",
    "/Res/flash_off.png",
    "/Res/flash_on.png",
    "/Res/wb_auto_s.png",
    "/Res/wb_sunny_s.png",
    "/Res/wb_cloudy_s.png",
    "/Res/wb_fluorescent_s.png",
    "/Res/wb_tungsten_s.png",
    "/Res/zoom_bar_1x.png",
    "/Res/zoom_bar_1_5x.png",
    "/Res/zoom_bar_2x.png",
    "/Res/zoom_bar_2_5x.png",
    "/Res/zoom_bar_3x.png",
    "/Res/zoom_bar_3_5x.png",
    "/Res/zoom_bar_max.png",
    "/Res/effect_roll_normal.png",
    "/Res/effect_roll_fisheye.png",
    "/Res/effect_roll_concave.png",
    "/Res/effect_roll_bw.png",
    "/Res/effect_roll_beach.png",
    "/Res/effect_roll_fall.png",
    "/Res/effect_roll_sepia.png",
    "/Res/effect_roll_negative.png",
    "/Res/effect_roll_edge.png",
    "/Res/effect_roll_mirror.png",
    // Only five rolls show an unavailable effect; the others serve both kinds of camera.
    "/Res/effect_roll_normal_dim.png",
    "/Res/effect_roll_fisheye.png",
    "/Res/effect_roll_concave.png",
    "/Res/effect_roll_bw_dim.png",
    "/Res/effect_roll_beach_dim.png",
    "/Res/effect_roll_fall.png",
    "/Res/effect_roll_sepia.png",
    "/Res/effect_roll_negative_dim.png",
    "/Res/effect_roll_edge_dim.png",
    "/Res/effect_roll_mirror.png",
    "/Res/c_guide.png",
    "/Res/c_guide_on.png",
    "/Res/hdr_off.png",
    "/Res/hdr.png",
    "/Res/info.png",
    "/Res/capture_small.png",
    "/Res/capture_small_down.png",
    "/Res/icon_setting.png",
};

static_assert(kSettingsPicture.first + kSettingsPicture.count == kOverlayPictureCount);

}  // namespace

result OverlayPictures::Load(Osp::Media::Image& decoder) {
    for (std::size_t i = 0; i < kResources.size(); ++i) {
        const result r = LoadPicture(decoder, kResources[i], bitmaps_[i]);
        if (Osp::Failed(r)) return r;
    }
    return result::kSuccess;
}

const Osp::Graphics::Bitmap& OverlayPictures::Get(const PictureGroup& group, int index) const {
    const auto offset = static_cast<std::size_t>(index);
    return bitmaps_[group.first + (offset < group.count ? offset : 0)];
}

}  // namespace Kivo
