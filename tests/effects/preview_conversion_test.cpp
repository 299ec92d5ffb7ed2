// Conversion of preview frames, against the table-driven plain version.
#include "effects/kernels/preview_conversion.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "tests/effects/plain/plain_preview.h"
#include "tests/support/pictures.h"

namespace {

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
        for (int y = 0; y < 512; ++y) {
            for (int x = 0; x < 512; ++x) {
                frame[static_cast<std::size_t>(512 * y + x)] = static_cast<std::uint8_t>(x / 2);
            }
        }
        for (int i = 0; i < 256 * 256; ++i) {
            frame[static_cast<std::size_t>(512 * 512 + i)] = static_cast<std::uint8_t>(i / 256);
            frame[static_cast<std::size_t>(512 * 512 * 5 / 4 + i)] = static_cast<std::uint8_t>(cb);
        }
        Plain::ConvertPreview(frame.data(), expected.View());
        Kivo::ConvertPreview(frame.data(), out.View());
        ExpectSame(out, expected, "converted preview");
    }
}

TEST(PreviewConversion, MapsVideoRangeToFullRange) {
    std::vector<std::uint8_t> frame(6, 128);
    Picture out(2, 2);
    for (const auto& [luma, value] : {std::pair{16, 0}, {235, 255}}) {
        std::fill(frame.begin(), frame.begin() + 4, static_cast<std::uint8_t>(luma));
        Kivo::ConvertPreview(frame.data(), out.View());
        EXPECT_EQ(out.bytes, std::vector<std::uint8_t>(12, static_cast<std::uint8_t>(value)));
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

}  // namespace
