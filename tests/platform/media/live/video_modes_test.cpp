#include "osp/media/live/video_modes.h"

#include <array>
#include <gtest/gtest.h>
#include <vector>

namespace Osp::Media {
namespace {

using enum VideoFormat;

TEST(VideoModes, AreChosenByRateThenSizeThenFormat) {
    const VideoMode vga{kYuy2, {640, 480}, 30};
    const VideoMode hdMjpeg{kMjpeg, {1280, 720}, 30};
    const VideoMode largeMjpeg{kMjpeg, {1920, 1080}, 30};
    const VideoMode largeSlow{kYuy2, {1920, 1080}, 5};
    const VideoMode exactSlow{kYuy2, {1280, 960}, 10};
    const VideoMode exact{kI420, {1280, 960}, 30};
    const VideoMode exactMjpeg{kMjpeg, {1280, 960}, 60};
    const VideoMode exactSomeRate{kNv12, {1280, 960}, 0};
    const struct {
        const char* why;
        std::vector<VideoMode> modes;
        VideoMode best;
    } cases[] = {
        {"large and often enough", {vga, hdMjpeg, largeMjpeg, largeSlow, exactSlow}, largeMjpeg},
        {"no larger than it need be", {largeMjpeg, exactMjpeg, vga}, exactMjpeg},
        {"often before large", {largeSlow, exactSlow, vga}, vga},
        {"large where nothing is quick", {{kYuy2, {640, 480}, 10}, exactSlow}, exactSlow},
        {"the largest of small ones", {vga, hdMjpeg}, hdMjpeg},
        {"unpacked where both are quick", {exactMjpeg, exact}, exact},
        {"an untold rate is a quick one", {exactSlow, exactSomeRate}, exactSomeRate},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ChooseMode(c.modes, {1280, 960}), c.best) << c.why;
    }
    EXPECT_EQ(ChooseMode({}, {1280, 960}), std::nullopt);
}

/// The fewest bytes over which a picture of that shape can be laid out; 0 when none can.
std::size_t FewestBytes(VideoFormat format, const Graphics::Dimension& size, int stride) {
    static std::array<std::uint8_t, 10000> memory;
    VideoPicture picture;
    for (std::size_t bytes = 0; bytes < memory.size(); ++bytes) {
        if (LayOut(format, size, stride, {memory.data(), bytes}, picture)) return bytes;
    }
    return 0;
}

TEST(VideoLayout, TakesAPictureThatLiesWithinItsDataOnly) {
    EXPECT_EQ(FewestBytes(kI420, {32, 16}, 0), 32u * 16 * 3 / 2);
    EXPECT_EQ(FewestBytes(kI420, {32, 16}, 40), 40u * 16 + 20 * 8 + 20 * 7 + 16);
    EXPECT_EQ(FewestBytes(kNv12, {32, 16}, 40), 40u * 16 + 40 * 7 + 32);
    EXPECT_EQ(FewestBytes(kYuy2, {31, 16}, 0), 64u * 16);
    EXPECT_EQ(FewestBytes(kMjpeg, {32, 16}, 0), 1u);
    for (const int stride : {31, -32, 1 << 30}) {
        EXPECT_EQ(FewestBytes(kI420, {32, 16}, stride), 0u) << stride;
    }
    for (const Graphics::Dimension size : {Graphics::Dimension{0, 16}, {32, -2}, {70000, 70000}}) {
        EXPECT_EQ(FewestBytes(kYuy2, size, 0), 0u) << size.width;
    }
}

}  // namespace
}  // namespace Osp::Media
