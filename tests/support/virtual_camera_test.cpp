// What a consumer gets from the virtual camera, well-behaved and otherwise.
#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>

#include "tests/support/camera_stack.h"
#include "tests/support/camera_watcher.h"
#include "tests/support/colour_bars.h"
#include "tests/support/jpeg.h"
#include "tests/support/virtual_camera/canvas.h"

namespace Osp::Testing {
namespace {

using namespace std::chrono_literals;

/// Red, green and blue of JPEG and RGB; Y, U and V of the others.
using Colour = std::array<int, 3>;

Colour ColourAt(const SeenFrame& frame, int x, int y) {
    const auto at = [&frame](int index) { return int{frame.bytes[static_cast<unsigned>(index)]}; };
    const int stride = frame.strideBytes;
    const int chroma = stride * frame.mode.height;
    switch (frame.mode.format) {
        case PixelFormat::kI420: {
            const int inPlane = y / 2 * (stride / 2) + x / 2;
            return {at(y * stride + x), at(chroma + inPlane), at(chroma * 5 / 4 + inPlane)};
        }
        case PixelFormat::kNv12: {
            const int pair = chroma + y / 2 * stride + x / 2 * 2;
            return {at(y * stride + x), at(pair), at(pair + 1)};
        }
        case PixelFormat::kYuy2: {
            const int pair = y * stride + x / 2 * 4;
            return {at(y * stride + x * 2), at(pair + 1), at(pair + 3)};
        }
        default: {
            const int pixel = y * stride + x * 3;
            return {at(pixel), at(pixel + 1), at(pixel + 2)};
        }
    }
}

Colour Expected(PixelFormat format, Bar bar) {
    const BarColour& colour = kBarColours[bar];
    if (format == PixelFormat::kRgb || format == PixelFormat::kMjpg) {
        return {colour.red, colour.green, colour.blue};
    }
    return {colour.luma, colour.blueDifference, colour.redDifference};
}

void ExpectColour(const SeenFrame& frame, const PatternArea& area, Bar bar) {
    const Colour actual = ColourAt(frame, area.x + area.width / 2, area.y + area.height / 2);
    const Colour expected = Expected(frame.mode.format, bar);
    const int tolerance = frame.mode.format == PixelFormat::kMjpg ? 4 : 0;
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(actual[i], expected[i], tolerance) << Describe(frame.mode) << ", bar " << bar;
    }
}

void ExpectPattern(const SeenFrame& frame) {
    const auto [format, width, height, rate] = frame.mode;
    for (int bar = 0; bar < kBarCount; ++bar) {
        ExpectColour(frame, BarArea(bar, width, height), static_cast<Bar>(bar));
    }
    ExpectColour(frame, MarkSquare(false, width, height), kWhite);
    ExpectColour(frame, MarkSquare(true, width, height), kRed);
    EXPECT_EQ(ColourAt(frame, 0, 0), ColourAt(frame, width - 1, 0)) << "the marks have no edges";
    const auto second = [&frame](int x, int y) { return ColourAt(frame, x, y)[1]; };
    const auto first = [&frame](int x, int y) { return ColourAt(frame, x, y)[0]; };
    const bool isRgb = format == PixelFormat::kRgb || format == PixelFormat::kMjpg;
    EXPECT_EQ(
        isRgb ? ReadFrameNumber(width, height, second) : ReadFrameNumber(width, height, first),
        frame.sequence)
        << Describe(frame.mode);
}

/// A JPEG as the pixels that are in it.
SeenFrame Decoded(SeenFrame frame) {
    if (frame.mode.format != PixelFormat::kMjpg) return frame;
    const Picture picture = Kivo::Testing::DecodeJpeg({frame.bytes.begin(), frame.bytes.end()});
    EXPECT_EQ(picture.width, frame.mode.width);
    EXPECT_EQ(picture.height, frame.mode.height);
    frame.bytes = picture.bytes;
    frame.strideBytes = picture.width * 3;
    return frame;
}

TEST(ColourBarsTest, NumbersAreReadBackAtAwkwardSizes) {
    for (const char* text : {"I420:64x64@1", "I420:66x70@1", "I420:642x482@1", "I420:1600x960@1"}) {
        const Mode mode = *ParseMode(text);
        const Canvas canvas(mode, 6);
        std::vector<std::uint8_t> bytes(canvas.SizeBytes());
        canvas.PaintPattern(bytes.data());
        EXPECT_FALSE(ReadFrameNumber(bytes.data(), canvas.strideBytes, mode.width, mode.height))
            << text << ": where there is no number";
        for (const unsigned number : {0u, 1u, 0x8000u, 0xA5C3u, 0xFFFFu}) {
            canvas.PaintNumber(bytes.data(), number);
            EXPECT_EQ(ReadFrameNumber(bytes.data(), canvas.strideBytes, mode.width, mode.height),
                      static_cast<int>(number))
                << text;
        }
    }
}

TEST(ColourBarsTest, WhatIsNoModeIsRefused) {
    for (const char* text : {"", "I420", "I420:640x480", "I420:641x480@30", "I420:640x480@0",
                             "XYZ:640x480@30", "I420:640@30", "I420:62x64@30", "@30:640x480"}) {
        EXPECT_FALSE(ParseMode(text)) << text;
    }
}

TEST(VirtualCameraTest, DeliversThePatternInEveryMode) {
    CameraStack stack;
    for (const char* text : {"I420:640x480@60", "NV12:642x482@60", "YUY2:640x480@60",
                             "MJPG:1280x720@30", "RGB:320x240@60"}) {
        const std::string slower = std::string(text, std::strchr(text, '@')) + "@5";
        VirtualCamera camera("camera", {"--mode", "I420:64x64@30", "--mode", slower, "--mode", text,
                                        "--padding", "12"});
        const Mode mode = *ParseMode(text);
        CameraWatcher watcher("camera", {mode});
        const auto frames = watcher.Collect(8);  // each of the buffers more than once
        ASSERT_GE(frames.size(), 8u) << text;
        for (const SeenFrame& frame : frames) {
            ASSERT_EQ(Describe(frame.mode), Describe(mode));
            ExpectPattern(Decoded(frame));
        }
        EXPECT_EQ(camera.Await("streaming "), Describe(mode));
    }
}

/// One camera in its default mode, and somebody who looks at it.
class MisbehaviourTest : public testing::Test {
  protected:
    std::vector<SeenFrame> After(const std::string& command, std::size_t count) {
        camera_.Send(command);
        watcher_.Collect(100, 200ms);  // until it is so
        return watcher_.Collect(count);
    }

    static constexpr std::size_t kWhole = 640 * 480 * 3 / 2;
    CameraStack stack_;
    VirtualCamera camera_{"camera"};
    const Mode mode_ = *ParseMode("I420:640x480@30");
    const Mode smallMode_ = *ParseMode("I420:320x240@30");
    CameraWatcher watcher_{"camera", {mode_, smallMode_}};
};

TEST_F(MisbehaviourTest, BuffersLieUntilAllIsWell) {
    ASSERT_EQ(watcher_.Collect(1).size(), 1u);
    EXPECT_EQ(After("short", 1).at(0).bytes.size(), kWhole / 2);
    EXPECT_EQ(After("stride 700", 1).at(0).strideBytes, 700);
    EXPECT_TRUE(After("damage", 1).at(0).isCorrupted);
    const SeenFrame whole = After("ok", 1).at(0);
    EXPECT_EQ(whole.bytes.size(), kWhole);
    EXPECT_FALSE(whole.isCorrupted);
    ExpectPattern(whole);
}

TEST(VirtualCameraTest, StartsAsItIsToldAndDamagesJpegs) {
    CameraStack stack;
    VirtualCamera camera("camera",
                         {"--mode", "MJPG:640x480@30", "--do", "stall", "--do", "damage"});
    CameraWatcher watcher("camera", {*ParseMode("MJPG:640x480@30")});
    EXPECT_TRUE(watcher.Collect(1, 300ms).empty());
    camera.Send("go");
    const auto frames = watcher.Collect(1);
    ASSERT_FALSE(frames.empty());
    const std::vector<std::uint8_t>& jpeg = frames[0].bytes;
    EXPECT_EQ(jpeg.at(0), 0xFF) << "its beginning is whole";
    EXPECT_GE(std::ranges::count(jpeg, 0xA5), static_cast<std::ptrdiff_t>(jpeg.size() / 2));
}

TEST_F(MisbehaviourTest, FramesComeLateInBurstsOrNotAtAll) {
    const auto onTime = watcher_.Collect(5);
    ASSERT_EQ(onTime.size(), 5u);
    for (const SeenFrame& frame : onTime) EXPECT_LT(frame.age, 80ms);
    const auto late = After("late 300", 9);
    const auto [freshest, oldest] = std::ranges::minmax(late, {}, &SeenFrame::age);
    EXPECT_GE(oldest.age, 300ms);
    EXPECT_GT(freshest.age, 150ms);
    EXPECT_GT(oldest.age - freshest.age, 60ms) << "they did not come together";

    const auto before = After("ok", 1);
    camera_.Send("stall");
    watcher_.Collect(100, 200ms);
    EXPECT_TRUE(watcher_.Collect(1, 300ms).empty());
    const auto afterwards = After("go", 1);
    ASSERT_FALSE(afterwards.empty());
    EXPECT_GT(afterwards.at(0).sequence, before.at(0).sequence + 12) << "the gap does not show";
    const auto slow = After("rate 5", 2);
    EXPECT_GT(slow.at(1).sequence, slow.at(0).sequence);
    EXPECT_LT(watcher_.Collect(100, 900ms).size(), 7u);
}

TEST_F(MisbehaviourTest, AnotherSizeComesInMidStream) {
    ASSERT_EQ(Describe(watcher_.Collect(1).at(0).mode), Describe(mode_));
    const SeenFrame small = After("size 320x240", 1).at(0);
    EXPECT_EQ(Describe(small.mode), Describe(smallMode_));
    ExpectPattern(small);
    camera_.Await("streaming I420 320x240@30");
    EXPECT_EQ(Describe(After("ok", 1).at(0).mode), Describe(mode_));
}

TEST_F(MisbehaviourTest, AFailedCameraReturns) {
    ASSERT_EQ(watcher_.Collect(1).size(), 1u);
    camera_.Send("error -5 the lens fell off");
    EXPECT_EQ(camera_.Await("failed "), "the lens fell off");
    watcher_.Collect(100, 100ms);
    EXPECT_TRUE(watcher_.Collect(1, 200ms).empty());
    camera_.Return();
    EXPECT_EQ(CameraWatcher("camera", {mode_}).Collect(1).size(), 1u);
}

}  // namespace
}  // namespace Osp::Testing
