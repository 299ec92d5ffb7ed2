// What becomes of pictures between their files and the effects.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "effects/kernels/bmp_rows.h"
#include "effects/kernels/rgba.h"
#include "tests/effects/plain/plain_storage.h"
#include "tests/support/pictures.h"

namespace {

using namespace Kivo::Effects;

std::vector<Size> Sizes() {
    std::vector<Size> sizes(std::begin(kAwkwardSizes), std::end(kAwkwardSizes));
    // Around the numbers of pixels that are moved at once, and a capture size.
    for (int width = 3; width < 24; ++width) sizes.push_back({width, 2});
    sizes.push_back({640, 480});
    return sizes;
}

TEST(BmpRows, BecomeAPictureTopDownInRgb) {
    for (const Size& size : Sizes()) {
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
    for (const Size& size : Sizes()) {
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
