#include "osp/media/live/picture_converter.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <libyuv/convert_from.h>
#include <string>
#include <turbojpeg.h>
#include <vector>

#include "osp/media/camera/i420.h"
#include "osp/media/picture/jpeg_codec.h"
#include "tests/support/pictures/colour_bars.h"

namespace Osp::Media {
namespace {

using namespace Osp::Testing;
using Base::ByteBuffer;
using Graphics::Dimension;

/// Colour bars as a device delivers them, the upper half dark.
struct DevicePicture {
    std::vector<std::uint8_t> bytes;
    VideoPicture picture;
};

/// A value of the dark half, whose pixels have two thirds of the light of the others.
int Dark(int value, int neutral) {
    return neutral + (value - neutral) * 2 / 3;
}

std::vector<std::uint8_t> BarsI420(const Dimension& size) {
    std::vector<std::uint8_t> frame(I420Bytes(size));
    std::uint8_t* const cb = frame.data() + size.width * size.height;
    std::uint8_t* const cr = cb + size.width * size.height / 4;
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const BarColour& bar =
                kBarColours[static_cast<std::size_t>(x * kBarCount / size.width)];
            const auto shade = [isDark = y < size.height / 2](int value, int neutral) {
                return static_cast<std::uint8_t>(isDark ? Dark(value, neutral) : value);
            };
            frame[static_cast<std::size_t>(y * size.width + x)] = shade(bar.luma, 16);
            const int chroma = y / 2 * (size.width / 2) + x / 2;
            cb[chroma] = shade(bar.blueDifference, 128);
            cr[chroma] = shade(bar.redDifference, 128);
        }
    }
    return frame;
}

std::vector<std::uint8_t> ToJpeg(const std::vector<std::uint8_t>& i420, const Dimension& size,
                                 int subsampling) {
    std::vector<std::uint8_t> pixels(PackedSize(size, PixelLayout::kBgrx));
    const std::uint8_t* const cb = i420.data() + i420.size() * 2 / 3;
    const std::uint8_t* const cr = cb + i420.size() / 6;
    libyuv::I420ToARGB(i420.data(), size.width, cb, size.width / 2, cr, size.width / 2,
                       pixels.data(), 4 * size.width, size.width, size.height);
    const tjhandle compressor = tjInitCompress();
    unsigned char* jpeg = nullptr;
    unsigned long bytes = 0;
    EXPECT_EQ(tjCompress2(compressor, pixels.data(), size.width, 0, size.height, TJPF_BGRX, &jpeg,
                          &bytes, subsampling, 90, 0),
              0);
    std::vector<std::uint8_t> result(jpeg, jpeg + bytes);
    tjFree(jpeg);
    tjDestroy(compressor);
    return result;
}

DevicePicture MakePicture(VideoFormat format, const Dimension& size, int subsampling = TJSAMP_422) {
    DevicePicture made;
    made.bytes = BarsI420(size);
    const std::vector<std::uint8_t> i420 = made.bytes;
    const auto [width, height] = size;
    const std::uint8_t* const cb = i420.data() + i420.size() * 2 / 3;
    const std::uint8_t* const cr = cb + i420.size() / 6;
    if (format == VideoFormat::kNv12) {
        libyuv::I420ToNV12(i420.data(), width, cb, width / 2, cr, width / 2, made.bytes.data(),
                           width, made.bytes.data() + i420.size() * 2 / 3, width, width, height);
    } else if (format == VideoFormat::kYuy2) {
        made.bytes.resize(i420.size() * 4 / 3);
        libyuv::I420ToYUY2(i420.data(), width, cb, width / 2, cr, width / 2, made.bytes.data(),
                           2 * width, width, height);
    } else if (format == VideoFormat::kMjpeg) {
        made.bytes = ToJpeg(i420, size, subsampling);
    }
    EXPECT_TRUE(LayOut(format, size, 0, made.bytes, made.picture));
    return made;
}

/// Of an upright I420 frame: which bar a place shows, and whether it is the dark half.
struct Seen {
    int bar = -1;
    bool isDark = false;
    friend bool operator==(const Seen&, const Seen&) = default;
};

Seen SeenAt(const ByteBuffer& frame, const Dimension& size, int x, int y) {
    const std::uint8_t* const luma = frame.GetPointer();
    const std::uint8_t* const cb = luma + size.width * size.height;
    const int chroma = y / 2 * (size.width / 2) + x / 2;
    const std::uint8_t* const cr = cb + size.width * size.height / 4;
    for (int bar = 0; bar < kBarCount; ++bar) {
        const BarColour& colour = kBarColours[static_cast<std::size_t>(bar)];
        for (const bool isDark : {false, true}) {
            const auto isNear = [isDark](int seen, int value, int neutral) {
                return std::abs(seen - (isDark ? Dark(value, neutral) : value)) <= 5;
            };
            if (isNear(luma[y * size.width + x], colour.luma, 16) &&
                isNear(cb[chroma], colour.blueDifference, 128) &&
                isNear(cr[chroma], colour.redDifference, 128)) {
                return {bar, isDark};
            }
        }
    }
    return {};
}

struct FormatCase {
    const char* name;
    VideoFormat format;
    int subsampling;
};

class PictureConverterTest : public testing::TestWithParam<FormatCase> {};

TEST_P(PictureConverterTest, TurnsTheFrontCamerasPictureAndMagnifiesTheOthers) {
    const DevicePicture made = MakePicture(GetParam().format, {1280, 960}, GetParam().subsampling);
    PictureConverter front(CameraSelection::kSecondary);
    ByteBuffer frame;
    ASSERT_TRUE(front.MakeFrame(made.picture, {{640, 480}, {1280, 960}, 0, {}}, frame));
    // A clockwise turn makes it upright: its left edge comes to the top.
    EXPECT_EQ(SeenAt(frame, {640, 480}, 500, 269), (Seen{kGreen, false}));
    EXPECT_EQ(SeenAt(frame, {640, 480}, 100, 209), (Seen{kMagenta, true}));
    EXPECT_EQ(SeenAt(frame, {640, 480}, 500, 469), (Seen{kYellow, false}));
    EXPECT_EQ(SeenAt(frame, {640, 480}, 500, 9), (Seen{kBlue, false}));

    PictureConverter back(CameraSelection::kPrimary);
    ASSERT_TRUE(back.MakeFrame(made.picture, {{800, 480}, {1280, 960}, 6, {}}, frame));
    EXPECT_EQ(SeenAt(frame, {800, 480}, 10, 400).bar, kGreen);  // four times: two bars are left
    EXPECT_EQ(SeenAt(frame, {800, 480}, 790, 400).bar, kMagenta);
}

TEST_P(PictureConverterTest, MakesAStillOfTheSizeAndGainsThatAreWanted) {
    const DevicePicture made = MakePicture(GetParam().format, {1280, 960}, GetParam().subsampling);
    PictureConverter converter(CameraSelection::kPrimary);
    for (const Dimension wanted : {Dimension{1280, 960}, {1600, 960}, {640, 480}}) {
        ByteBuffer jpeg;
        ASSERT_TRUE(converter.MakeStill(made.picture, {{800, 480}, wanted, 0, {}}, jpeg));
        Base::Block pixels;
        Dimension size;
        ASSERT_EQ(DecodeJpeg(jpeg.Bytes(), PixelLayout::kRgb, pixels, size), result::kSuccess);
        EXPECT_EQ(size, wanted);
        const auto at = [&](int bar) {
            const std::size_t x = static_cast<std::size_t>((2 * bar + 1) * size.width / 16);
            return pixels.data() +
                   3 * (static_cast<std::size_t>(size.width * (size.height * 3 / 4)) + x);
        };
        for (const int bar : {kYellow, kRed, kBlue}) {
            const BarColour& colour = kBarColours[static_cast<std::size_t>(bar)];
            EXPECT_NEAR(at(bar)[0], colour.red, 8) << bar;
            EXPECT_NEAR(at(bar)[1], colour.green, 8) << bar;
            EXPECT_NEAR(at(bar)[2], colour.blue, 8) << bar;
        }
        const bool isPassed = std::ranges::equal(jpeg.Bytes(), made.bytes);
        EXPECT_EQ(isPassed,
                  GetParam().format == VideoFormat::kMjpeg && wanted == made.picture.size);
    }
    ByteBuffer frame;
    ByteBuffer jpeg;
    const StreamSettings warm{{800, 480}, {1280, 960}, 0, CameraWhiteBalance::kTungsten};
    ASSERT_TRUE(converter.MakeFrame(made.picture, warm, frame));
    ASSERT_TRUE(converter.MakeStill(made.picture, warm, jpeg));
    EXPECT_LT(frame.GetPointer()[400 * 800 + 50], 230) << "white keeps its light";
    EXPECT_FALSE(std::ranges::equal(jpeg.Bytes(), made.bytes));
}

INSTANTIATE_TEST_SUITE_P(Of, PictureConverterTest,
                         testing::Values(FormatCase{"I420", VideoFormat::kI420, 0},
                                         FormatCase{"Nv12", VideoFormat::kNv12, 0},
                                         FormatCase{"Yuy2", VideoFormat::kYuy2, 0},
                                         FormatCase{"Mjpeg422", VideoFormat::kMjpeg, TJSAMP_422},
                                         FormatCase{"Mjpeg420", VideoFormat::kMjpeg, TJSAMP_420},
                                         FormatCase{"Mjpeg444", VideoFormat::kMjpeg, TJSAMP_444}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(MjpegDecoder, RefusesWhatIsDamagedButMindsNoPadding) {
    PictureConverter converter(CameraSelection::kPrimary);
    const StreamSettings settings{{800, 480}, {640, 480}, 0, {}};
    const DevicePicture whole = MakePicture(VideoFormat::kMjpeg, {640, 480});
    const auto makes = [&](std::vector<std::uint8_t> bytes) {
        VideoPicture picture;
        ByteBuffer frame;
        ByteBuffer jpeg;
        return LayOut(VideoFormat::kMjpeg, {640, 480}, 0, bytes, picture) &&
               converter.MakeFrame(picture, settings, frame) &&
               converter.MakeStill(picture, settings, jpeg);
    };
    std::vector<std::uint8_t> bytes = whole.bytes;
    EXPECT_TRUE(makes(bytes));
    bytes.insert(bytes.end() - 2, 7, 0);  // before the marker of the end
    EXPECT_TRUE(makes(bytes));
    bytes = whole.bytes;
    bytes.resize(bytes.size() / 2);
    EXPECT_FALSE(makes(bytes));
    EXPECT_FALSE(makes({0xFF, 0xD8, 0xFF}));
    EXPECT_FALSE(makes(std::vector<std::uint8_t>(5000, 0x55)));
}

}  // namespace
}  // namespace Osp::Media
