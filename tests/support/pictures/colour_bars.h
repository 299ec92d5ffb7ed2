// The picture of the virtual camera: what it shows, and what can be read back from a photograph.
//
// Eight bars of the full height in full saturation (100 %): video range BT.601 in YUV formats, 0
// and 255 in RGB and JPEG. In the upper corners is a black mark with a square in it, white to the
// left and red to the right, so that a picture that is mirrored or turned is known. Over the bottom
// eighth go sixteen blocks, white for 1 and black for 0, the highest bit first: the number of the
// frame. All edges are at even positions.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace Osp::Testing {

struct BarColour {
    std::uint8_t red, green, blue;
    std::uint8_t luma, blueDifference, redDifference;
};

enum Bar { kWhite, kYellow, kCyan, kGreen, kMagenta, kRed, kBlue, kBlack, kBarCount };

/// From left to right.
inline constexpr std::array<BarColour, kBarCount> kBarColours{{{255, 255, 255, 235, 128, 128},
                                                               {255, 255, 0, 210, 16, 146},
                                                               {0, 255, 255, 170, 166, 16},
                                                               {0, 255, 0, 145, 54, 34},
                                                               {255, 0, 255, 106, 202, 222},
                                                               {255, 0, 0, 81, 90, 240},
                                                               {0, 0, 255, 41, 240, 110},
                                                               {0, 0, 0, 16, 128, 128}}};

/// Bits of the number; the frames are counted modulo 2^16.
inline constexpr int kCodeBits = 16;
/// Sizes are even and not smaller.
inline constexpr int kLeastPatternSize = 64;

struct PatternArea {
    int x, y, width, height;
};

/// The smallest even number that is not below `value`.
constexpr int EvenUp(int value) {
    return value + value % 2;
}

/// Area `index` of `count` beside each other, from row `top` to row `bottom`.
constexpr PatternArea Column(int index, int count, int width, int top, int bottom) {
    const int left = EvenUp(width * index / count);
    return {left, top, EvenUp(width * (index + 1) / count) - left, bottom - top};
}

constexpr int CodeTop(int height) {
    return EvenUp(height - height / 8);
}

/// Over the full height, code and marks included.
constexpr PatternArea BarArea(int bar, int width, int height) {
    return Column(bar, kBarCount, width, 0, height);
}

/// Of the highest bit for 0.
constexpr PatternArea CodeArea(int block, int width, int height) {
    return Column(block, kCodeBits, width, CodeTop(height), height);
}

/// The whole mark, whose inner half in both directions is the coloured square.
constexpr PatternArea MarkArea(bool isRight, int width, int height) {
    const int side = (width < height ? width : height) / 64 * 8;
    return {isRight ? width - side : 0, 0, side, side};
}

constexpr PatternArea MarkSquare(bool isRight, int width, int height) {
    const PatternArea mark = MarkArea(isRight, width, height);
    return {mark.x + mark.width / 4, mark.width / 4, mark.width / 2, mark.width / 2};
}

/// The number of the frame in a picture of any size that shows the whole of it, from
/// `lumaAt(x, y)`, 0 to 255 or video range; nothing when a block is neither black nor white.
template <class LumaAt>
std::optional<int> ReadFrameNumber(int width, int height, const LumaAt& lumaAt) {
    int number = 0;
    for (int block = 0; block < kCodeBits; ++block) {
        // The middle of it, away from what scaling and JPEG do to edges.
        const PatternArea area = CodeArea(block, width, height);
        const int right = area.x + area.width * 3 / 4;
        const int bottom = area.y + area.height * 3 / 4;
        int sum = 0;
        int count = 0;
        for (int y = area.y + area.height / 4; y < bottom; ++y) {
            for (int x = area.x + area.width / 4; x < right; ++x, ++count) sum += lumaAt(x, y);
        }
        if (count == 0) return std::nullopt;
        const int mean = sum / count;
        if (mean > 64 && mean < 192) return std::nullopt;
        number = number * 2 + (mean > 128 ? 1 : 0);
    }
    return number;
}

/// From the luma plane of a YUV picture.
inline std::optional<int> ReadFrameNumber(const std::uint8_t* luma, int strideBytes, int width,
                                          int height) {
    return ReadFrameNumber(width, height,
                           [=](int x, int y) { return int{luma[y * strideBytes + x]}; });
}

/// From pixels of three or four bytes whose second one is green, which tells black from white.
inline std::optional<int> ReadFrameNumberOfPixels(const std::uint8_t* pixels, int pixelBytes,
                                                  int strideBytes, int width, int height) {
    return ReadFrameNumber(width, height, [=](int x, int y) {
        return int{pixels[y * strideBytes + x * pixelBytes + 1]};
    });
}

}  // namespace Osp::Testing
