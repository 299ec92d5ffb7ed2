// The pictures that the mask panel shows.
#pragma once

#include <array>
#include <cstdint>

#include <osp/graphics/point.h>

namespace Kivo {

/// Values of one setting lie in a row: the picture of value n is the first one plus n.
enum class IconType : std::uint8_t {
    kNone = 0,
    kFirstEffect = 1,  // to 10
    kFlashOn = 11,
    kFlashOff = 12,
    kHdrOn = 13,
    kHdrOff = 14,
    kFrontCamera = 15,
    kBackCamera = 16,
    kFirstWhiteBalance = 17,  // to 21
    kFirstZoom = 22,          // to 28
    kProcessing = 29,
    kHelp = 30,
    kCredit = 31,
    kFlashText = 32,  // the words on white, without a bitmap
};

/// The icon `offset` places after `first`.
constexpr IconType IconAfter(IconType first, int offset) {
    return static_cast<IconType>(static_cast<int>(first) + offset);
}

struct IconPicture {
    const char* path;
    Osp::Graphics::Point place;
};

/// By icon type from 1 on.
inline constexpr std::array<IconPicture, 31> kIconPictures{{
    {"/Res/effect_normal.png", {255, 110}},  {"/Res/effect_fisheye.png", {255, 110}},
    {"/Res/effect_concave.png", {255, 110}}, {"/Res/effect_bw.png", {255, 110}},
    {"/Res/effect_beach.png", {255, 110}},   {"/Res/effect_fall.png", {255, 110}},
    {"/Res/effect_sepia.png", {255, 110}},   {"/Res/effect_negative.png", {255, 110}},
    {"/Res/effect_edge.png", {255, 110}},    {"/Res/effect_mirror.png", {255, 110}},
    {"/Res/flash_on_text.png", {255, 110}},  {"/Res/flash_off_text.png", {255, 110}},
    {"/Res/hdr_text.png", {255, 110}},       {"/Res/hdr_off_text.png", {255, 110}},
    {"/Res/camsel_front.png", {255, 110}},   {"/Res/camsel_back.png", {255, 110}},
    {"/Res/wb_auto.png", {255, 110}},        {"/Res/wb_sunny.png", {255, 110}},
    {"/Res/wb_cloudy.png", {255, 110}},      {"/Res/wb_fluorescent.png", {255, 110}},
    {"/Res/wb_tungsten.png", {255, 110}},    {"/Res/zoom_1x.png", {255, 110}},
    {"/Res/zoom_1_5x.png", {255, 110}},      {"/Res/zoom_2x.png", {255, 110}},
    {"/Res/zoom_2_5x.png", {255, 110}},      {"/Res/zoom_3x.png", {255, 110}},
    {"/Res/zoom_3_5x.png", {255, 110}},      {"/Res/zoom_max.png", {255, 110}},
    {"/Res/processing.png", {255, 212}},     {"/Res/info_help.png", {0, 0}},
    {"/Res/info_contents.png", {230, 134}},
}};
static_assert(kIconPictures.size() == static_cast<std::size_t>(IconType::kCredit));

}  // namespace Kivo
