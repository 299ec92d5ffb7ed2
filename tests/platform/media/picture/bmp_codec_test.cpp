#include "osp/media/picture/bmp_codec.h"

#include <gtest/gtest.h>

#include "tests/platform/media/picture/picture_bytes.h"

namespace Osp::Media {
namespace {

TEST(BmpCodec, WritesRowsBottomToTopBlueFirst) {
    for (const Size& size : {Size{1, 1}, {5, 3}, {4, 7}, {64, 48}}) {
        const Picture picture = RandomPicture(size.width, size.height, Look::kNoise, 2);
        const int rowBytes = (3 * size.width + 3) / 4 * 4;
        ASSERT_EQ(BmpFileBytes(SizeOf(picture)), 54 + rowBytes * size.height);
        Bytes expected = {'B', 'M'};
        const auto put = [&expected](std::uint32_t value, int bytes) {
            for (; bytes > 0; --bytes, value >>= 8)
                expected.push_back(static_cast<std::uint8_t>(value));
        };
        const auto imageBytes = static_cast<std::uint32_t>(rowBytes * size.height);
        for (const std::uint32_t value :
             {54 + imageBytes, 0U, 54U, 40U, static_cast<std::uint32_t>(size.width),
              static_cast<std::uint32_t>(size.height), 1U | 24U << 16, 0U, imageBytes, 2835U, 2835U,
              0U, 0U}) {
            put(value, 4);
        }
        for (int y = size.height - 1; y >= 0; --y) {
            for (int x = 0; x < size.width; ++x) {
                const std::uint8_t* const p = picture.View().Row(y) + 3 * x;
                expected.insert(expected.end(), {p[2], p[1], p[0]});
            }
            expected.resize((expected.size() - 54 + 3) / 4 * 4 + 54);
        }
        for (const PixelLayout layout : kLayouts) {
            const Bytes pixels = InLayout(picture, layout, 200);
            Bytes file(expected.size(), 0xCC);
            EncodeBmp(PackedView(pixels.data(), SizeOf(picture), layout), file.data());
            EXPECT_TRUE(file == expected) << size.width << " x " << size.height;
        }
    }
    EXPECT_EQ(BmpFileBytes({32767, 32767}), 0) << "does not fit";
}

}  // namespace
}  // namespace Osp::Media
