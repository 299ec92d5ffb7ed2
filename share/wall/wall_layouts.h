// The six mosaics of the photo wall.
#pragma once

#include <algorithm>
#include <array>
#include <span>

namespace Kivo {

/// A hole in the wall and the picture behind it, which it clips; in pixels.
struct WallCell {
    int width;
    int height;
    int top;
    int left;
    int pictureTop;  // from the hole's corner
    int pictureLeft;
    int pictureWidth;
    int pictureHeight;
};

// In the order in which they are filled. Some overlap, some pictures are far larger than their
// hole, one is narrower, and the right-hand columns leave the screen by a pixel or two: all of that
// is how the mosaics were laid out.

inline constexpr std::array<WallCell, 13> kWallLayout0{{
    {191, 255, 129, 0, -35, 0, 192, 290},
    {190, 127, 257, 385, 0, -1, 193, 128},
    {224, 127, 257, 577, 0, -1, 229, 128},
    {190, 127, 257, 193, 0, -1, 193, 128},
    {382, 255, 0, 193, 0, -4, 386, 256},
    {224, 190, 65, 577, -1, -2, 229, 192},
    {94, 63, 0, 577, 0, -1, 97, 64},
    {128, 63, 0, 673, 0, -1, 131, 64},
    {191, 127, 0, 0, 0, -1, 193, 128},
    {191, 94, 386, 0, 0, -1, 194, 95},
    {190, 94, 386, 193, 0, -1, 193, 95},
    {190, 94, 386, 385, 0, -1, 193, 95},
    {225, 94, 386, 577, 0, -1, 230, 95},
}};
inline constexpr std::array<WallCell, 8> kWallLayout1{{
    {518, 384, 0, 193, -11, -1, 417, 406},
    {191, 384, 0, 611, 0, -177, 545, 384},
    {94, 191, 0, 97, 0, -89, 272, 192},
    {95, 319, 0, 0, 0, -179, 454, 320},
    {94, 191, 193, 97, 0, -89, 272, 192},
    {95, 63, 321, 0, -2, 0, 96, 68},
    {399, 94, 386, 0, 0, 0, 399, 95},
    {399, 94, 386, 401, 0, 0, 399, 95},
}};
inline constexpr std::array<WallCell, 9> kWallLayout2{{
    {225, 255, 129, 577, -1, 0, 230, 257},
    {225, 127, 0, 577, -1, -1, 230, 129},
    {190, 127, 257, 385, -1, -1, 192, 129},
    {191, 127, 257, 0, -1, 0, 192, 129},
    {383, 255, 0, 0, -1, 0, 384, 257},
    {190, 127, 257, 193, -1, -1, 192, 129},
    {190, 255, 0, 385, -16, -1, 192, 287},
    {383, 94, 386, 0, -1, 0, 384, 95},
    {415, 94, 386, 385, -1, 0, 416, 95},
}};
inline constexpr std::array<WallCell, 8> kWallLayout3{{
    {191, 255, 0, 0, 0, 0, 192, 256},
    {190, 255, 0, 193, 0, -1, 192, 256},
    {190, 255, 0, 385, 0, -1, 192, 256},
    {225, 255, 0, 577, 0, -1, 227, 256},
    {191, 223, 257, 0, 0, 0, 192, 225},
    {190, 223, 257, 193, 0, -1, 192, 225},
    {190, 223, 257, 385, 0, -1, 192, 225},
    {225, 223, 257, 577, 0, -1, 227, 225},
}};
inline constexpr std::array<WallCell, 9> kWallLayout4{{
    {191, 191, 0, 0, 0, 0, 270, 192},
    {383, 191, 193, 0, 0, 0, 384, 271},
    {225, 319, 0, 577, 0, -35, 297, 320},
    {190, 191, 193, 385, 0, -41, 273, 192},
    {225, 63, 321, 577, -197, 0, 226, 268},
    {382, 191, 0, 193, -39, -1, 384, 270},
    {191, 94, 386, 0, 0, 0, 191, 95},
    {191, 94, 386, 193, 0, 0, 191, 95},
    {415, 94, 386, 385, 0, 0, 416, 95},
}};
inline constexpr std::array<WallCell, 9> kWallLayout5{{
    {382, 255, 0, 289, -1, -1, 384, 257},
    {287, 191, 0, 0, -1, 0, 288, 193},
    {287, 191, 193, 0, -1, 0, 288, 193},
    {382, 127, 257, 289, -34, -1, 384, 257},
    {127, 127, 0, 673, -15, 0, 288, 193},
    {127, 126, 129, 673, -48, 0, 288, 193},
    {127, 127, 257, 673, 0, 0, 288, 193},
    {399, 94, 386, 0, -1, 0, 400, 95},
    {399, 94, 386, 401, -1, 0, 400, 95},
}};

using WallLayout = std::span<const WallCell>;
inline constexpr std::array<WallLayout, 6> kWallLayouts{kWallLayout0, kWallLayout1, kWallLayout2,
                                                        kWallLayout3, kWallLayout4, kWallLayout5};

/// Whether the cell has an area and its picture shows in it; the mosaics end two pixels right of
/// the screen at most.
constexpr bool IsOnWall(const WallCell& cell) {
    const bool hasArea = cell.width > 0 && cell.height > 0 && cell.top >= 0 && cell.left >= 0;
    const bool isInside = cell.left + cell.width <= 802 && cell.top + cell.height <= 480;
    const bool beginsInside = cell.pictureTop <= 0 && cell.pictureLeft <= 0;
    const bool fillsHeight = cell.pictureTop + cell.pictureHeight >= cell.height;
    return hasArea && isInside && beginsInside && fillsHeight;
}
static_assert(std::ranges::all_of(kWallLayouts, [](const WallLayout& layout) {
    return std::ranges::all_of(layout, IsOnWall);
}));

}  // namespace Kivo
