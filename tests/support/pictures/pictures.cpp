#include "tests/support/pictures/pictures.h"

#include <gtest/gtest.h>
#include <random>
#include <sstream>

Picture::Picture(int ownWidth, int ownHeight, std::uint8_t fill)
    : width(ownWidth),
      height(ownHeight),
      bytes(
          std::size_t{3} * static_cast<std::size_t>(ownWidth) * static_cast<std::size_t>(ownHeight),
          fill) {}

Picture RandomPicture(int width, int height, Look look, unsigned seed) {
    std::mt19937 random(seed);
    const auto next = [&random] { return static_cast<unsigned>(random()); };
    const auto slope = [&next] { return next() % 7 + 1; };
    const unsigned slopes[3] = {slope(), slope(), slope()};
    const unsigned salt = next();
    const auto valueOf = [&](unsigned x, unsigned y, unsigned c, bool isOutlier) -> unsigned {
        switch (look) {
            case Look::kNoise:
                return next() >> 11;
            case Look::kGradient:
                return (x * slopes[c] + y * slopes[(c + 1) % 3]) / 3;
            case Look::kOutliers:
                if (isOutlier) return next() >> 11;
                return ((x / 40 + y / 40 * 37) * 2654435761U + salt) >> 13;
            case Look::kExtremes:
                return next() % 2 == 0 ? 0 : 255;
        }
        return 0;
    };
    Picture picture(width, height);
    auto value = picture.bytes.begin();
    for (unsigned y = 0; y < static_cast<unsigned>(height); ++y) {
        for (unsigned x = 0; x < static_cast<unsigned>(width); ++x) {
            const bool isOutlier = next() % 16 == 0;
            for (unsigned c = 0; c < 3; ++c) {
                *value++ = static_cast<std::uint8_t>(valueOf(x, y, c, isOutlier));
            }
        }
    }
    return picture;
}

std::vector<Picture> RandomPictures(int count, int width, int height, unsigned firstSeed) {
    std::vector<Picture> pictures;
    for (unsigned i = 0; i < static_cast<unsigned>(count); ++i) {
        pictures.push_back(
            RandomPicture(width, height, kLooks[i % std::size(kLooks)], firstSeed + i));
    }
    return pictures;
}

Picture EveryColour() {
    Picture picture(4096, 4096);
    for (unsigned i = 0; i < 1U << 24; ++i) {
        picture.bytes[3 * i] = static_cast<std::uint8_t>(i);
        picture.bytes[3 * i + 1] = static_cast<std::uint8_t>(i >> 8);
        picture.bytes[3 * i + 2] = static_cast<std::uint8_t>(i >> 16);
    }
    return picture;
}

void ExpectSame(const Picture& actual, const Picture& expected, std::string_view what) {
    ASSERT_EQ(actual.width, expected.width);
    ASSERT_EQ(actual.height, expected.height);
    if (actual.bytes == expected.bytes) return;
    std::ostringstream differences;
    int shown = 0;
    for (std::size_t i = 0; i < actual.bytes.size() && shown < 5; ++i) {
        if (actual.bytes[i] == expected.bytes[i]) continue;
        const auto pixel = static_cast<int>(i / 3);
        differences << "\n  (" << pixel % actual.width << ", " << pixel / actual.width
                    << ") channel " << i % 3 << ": " << int{actual.bytes[i]} << " instead of "
                    << int{expected.bytes[i]};
        ++shown;
    }
    ADD_FAILURE() << what << ", " << actual.width << " x " << actual.height << differences.str();
}
