// What becomes of pictures between cameras, files and effects.
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "effects/conversions/bmp_rows.h"
#include "effects/conversions/preview_conversion.h"
#include "effects/conversions/rgba.h"
#include "tests/effects/plain/plain_conversions.h"
#include "tests/support/pictures/pictures.h"

namespace {

using namespace Kivo::Effects;

constexpr Size kPreviewSizes[] = {{2, 2}, {6, 4}, {62, 34}, {642, 10}, {800, 480}, {640, 480}};

TEST(PreviewConversion, GivesThePlainPixels) {
    std::mt19937 random(11);
    for (const Size& size : kPreviewSizes) {
        std::vector<std::uint8_t> frame(Kivo::PreviewFrameBytes(size.width, size.height));
        for (auto& value : frame) value = static_cast<std::uint8_t>(random());
        Picture expected(size.width, size.height);
        Plain::ConvertPreview(frame.data(), expected.View());
        AtEveryVectorLevel([&](int) {
            Picture out(size.width, size.height);
            Kivo::ConvertPreview(frame.data(), out.View());
            ExpectSame(out, expected, "converted preview");
        });
    }
}

TEST(PreviewConversion, GivesThePlainPixelsForEveryLumaAndChroma) {
    // Luma runs along the row in pairs, one chroma down the rows, the other by frame.
    Picture expected(512, 512);
    Picture out(512, 512);
    std::vector<std::uint8_t> frame(Kivo::PreviewFrameBytes(512, 512));
    for (int cb = 0; cb < 256; cb += 5) {
        for (unsigned i = 0; i < 512 * 512; ++i) frame[i] = static_cast<std::uint8_t>(i / 2);
        for (unsigned i = 0; i < 256 * 256; ++i) {
            frame[512 * 512 + i] = static_cast<std::uint8_t>(i / 256);
            frame[512 * 512 * 5 / 4 + i] = static_cast<std::uint8_t>(cb);
        }
        Plain::ConvertPreview(frame.data(), expected.View());
        Kivo::ConvertPreview(frame.data(), out.View());
        ExpectSame(out, expected, "converted preview");
    }
}

TEST(PreviewEncoding, GivesThePlainFrameWithAndWithoutBlend) {
    for (const Size& size : kPreviewSizes) {
        const Picture in = RandomPicture(size.width, size.height, Look::kNoise, 12);
        const Picture firstFrames[] = {
            Picture(0, 0), RandomPicture(size.width, size.height, Look::kNoise, 13),
            RandomPicture(1280, 960, Look::kNoise, 14), RandomPicture(33, 21, Look::kNoise, 15)};
        for (const Picture& first : firstFrames) {
            const auto view = first.width > 0 ? first.View() : Kivo::Effects::ConstPixels{};
            std::vector<std::uint8_t> expected(Kivo::PreviewFrameBytes(size.width, size.height));
            Plain::EncodePreview(in.View(), view, expected.data());
            AtEveryVectorLevel([&](int level) {
                std::vector<std::uint8_t> out(expected.size());
                Kivo::EncodePreview(in.View(), view, out.data());
                EXPECT_EQ(out, expected)
                    << size.width << " x " << size.height << " with a first frame of "
                    << first.width << " at level " << level;
            });
        }
    }
}

std::vector<Size> StoredSizes() {
    std::vector<Size> sizes(std::begin(kAwkwardSizes), std::end(kAwkwardSizes));
    // Around the numbers of pixels that are moved at once, and a capture size.
    for (int width = 3; width < 24; ++width) sizes.push_back({width, 2});
    sizes.push_back({640, 480});
    return sizes;
}

TEST(BmpRows, BecomeAPictureTopDownInRgb) {
    for (const Size& size : StoredSizes()) {
        const Picture in = RandomPicture(size.width, size.height, Look::kNoise, 30);
        Picture expected(size.width, size.height);
        Plain::FromBmpRows(in.bytes.data(), expected.View());
        AtEveryVectorLevel([&](int level) {
            Picture out(size.width, size.height, 0xA5);
            FromBmpRows(in.bytes.data(), out.View());
            ExpectSame(out, expected, "at level " + std::to_string(level));
        });
    }
}

TEST(Rgba, CopiesOrTurnsAQuarterClockwise) {
    for (const Size& size : StoredSizes()) {
        const Picture in = RandomPicture(size.width, size.height, Look::kNoise, 31);
        for (const bool turned : {false, true}) {
            std::vector<std::uint8_t> expected(in.bytes.size() / 3 * 4);
            Plain::ConvertToRgba(in.View(), turned, expected.data());
            AtEveryVectorLevel([&](int level) {
                std::vector<std::uint8_t> out(expected.size());
                ConvertToRgba(in.View(), turned, out.data(), {0, 7});
                ConvertToRgba(in.View(), turned, out.data(), {7, size.height});
                EXPECT_EQ(out, expected)
                    << size.width << " x " << size.height << " at level " << level;
            });
        }
    }
}

}  // namespace
