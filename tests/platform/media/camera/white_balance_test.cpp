#include "osp/media/camera/white_balance.h"

#include <cmath>
#include <gtest/gtest.h>

#include "osp/media/camera/i420.h"
#include "tests/platform/media/picture/picture_bytes.h"

namespace Osp::Media {
namespace {

struct Balanced {
    double red;
    double green;
    double blue;
};

Balanced Apply(const ColorGains& gains, const std::uint8_t* pixel) {
    const auto one = [](int value, int gain) {
        return static_cast<double>(std::min(255, (value * gain + 128) / 256));
    };
    return {one(pixel[2], gains.red), one(pixel[1], gains.green), one(pixel[0], gains.blue)};
}

constexpr CameraWhiteBalance kAll[] = {
    CameraWhiteBalance::kAuto, CameraWhiteBalance::kSunny, CameraWhiteBalance::kCloudy,
    CameraWhiteBalance::kFluorescent, CameraWhiteBalance::kTungsten};

// The plain formulas of ITU-R BT.601 in video range, first chroma plane Cb, second Cr.
TEST(I420, FramesHaveTheColoursOfThePicture) {
    constexpr int kWidth = 46;
    constexpr int kHeight = 30;
    for (const Look look : kLooks) {
        const Bytes bgrx =
            InLayout(RandomPicture(kWidth, kHeight, look, 9), PixelLayout::kBgrx, 77);
        for (const CameraWhiteBalance balance : kAll) {
            const ColorGains gains = GainsOf(balance);
            Bytes frame(I420Bytes({kWidth, kHeight}));
            ConvertToI420(PackedView(bgrx.data(), {kWidth, kHeight}, PixelLayout::kBgrx), gains,
                          frame.data());
            const auto at = [&](int x, int y) {
                return Apply(gains, &bgrx[4 * static_cast<std::size_t>(y * kWidth + x)]);
            };
            for (int y = 0; y < kHeight; ++y) {
                for (int x = 0; x < kWidth; ++x) {
                    const auto [r, g, b] = at(x, y);
                    const double luma = 16 + (65.481 * r + 128.553 * g + 24.966 * b) / 255;
                    ASSERT_NEAR(frame[static_cast<std::size_t>(y * kWidth + x)], luma, 1.5);
                }
            }
            for (int y = 0; y < kHeight; y += 2) {
                for (int x = 0; x < kWidth; x += 2) {
                    Balanced mean{};
                    for (const auto& [r, g, b] :
                         {at(x, y), at(x + 1, y), at(x, y + 1), at(x + 1, y + 1)}) {
                        mean = {mean.red + r / 4, mean.green + g / 4, mean.blue + b / 4};
                    }
                    const auto index =
                        static_cast<std::size_t>(kWidth * kHeight + y / 2 * (kWidth / 2) + x / 2);
                    const double cb =
                        128 + (-37.797 * mean.red - 74.203 * mean.green + 112 * mean.blue) / 255;
                    const double cr =
                        128 + (112 * mean.red - 93.786 * mean.green - 18.214 * mean.blue) / 255;
                    ASSERT_NEAR(frame[index], cb, 1.8);
                    ASSERT_NEAR(frame[index + kWidth * kHeight / 4], cr, 1.8);
                }
            }
        }
    }
}

}  // namespace
}  // namespace Osp::Media
