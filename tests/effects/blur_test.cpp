// The line blur and its tables.
#include "effects/blur/blur.h"

#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <vector>

#include "effects/blur/gaussian_levels.h"
#include "effects/kernels/hue2rgb.h"
#include "tests/effects/plain/plain_blur.h"
#include "tests/effects/plain/plain_colour.h"

namespace {

using namespace Kivo::Effects;

TEST(GaussianLevels, AreThePlainMatricesAndProducts) {
    const GaussianLevels levels;
    const Plain::Levels plain;
    for (int level = 0; level < GaussianLevels::kCount; ++level) {
        const auto weights = levels.Weights(level);
        EXPECT_EQ(levels.Length(level), 2 * level + 1);
        EXPECT_EQ(std::vector(weights.begin(), weights.end()), plain.matrix[level]);
        const float* const products = levels.Products(level);
        EXPECT_EQ(std::vector(products, products + 256 * levels.Length(level)), plain.table[level]);
    }
}

// Worked out apart from either, by another language with floats rounded by hand.
TEST(GaussianLevels, AreFloatsFromTheirFirstStoreOn) {
    const std::vector<float> third{0x1.dbd6e6p-5F, 0x1.082a3ap-3F, 0x1.aad8fcp-3F, 0x1.ac0e2p-3F};
    const std::vector<float> widest{0x1.e1050cp-7F, 0x1.5e3724p-6F, 0x1.e7eeacp-6F, 0x1.45381ap-5F,
                                    0x1.9ece46p-5F, 0x1.fa3744p-5F, 0x1.278ab8p-4F, 0x1.4a2edap-4F,
                                    0x1.60f32p-4F,  0x1.6114cep-4F};
    const GaussianLevels levels;
    for (const auto& half : {third, widest}) {
        const auto weights = levels.Weights(static_cast<int>(half.size()) - 1);
        for (std::size_t i = 0; i < half.size(); ++i) {
            EXPECT_EQ(weights[i], half[i]) << half.size() << " to the middle, " << i;
            EXPECT_EQ(weights[weights.size() - 1 - i], half[i]) << i;
        }
    }
}

TEST(GaussianLevels, HandOutArraysThatTheCallerOwns) {
    float* matrix = nullptr;
    const int length = gen_convolve_matrix(-4, &matrix);
    const std::unique_ptr<float[]> owned(matrix);
    ASSERT_EQ(length, 9);
    const std::unique_ptr<float[]> table(gen_lookup_table(matrix, length));
    EXPECT_EQ(table[8 * 256 + 200], matrix[8] * 200);
}

TEST(Blur, GivesThePlainLineAtEveryLevelAndLength) {
    const GaussianLevels levels;
    const Plain::Levels plain;
    std::mt19937 random(3);
    for (const int length : {1, 2, 8, 9, 17, 18, 19, 20, 27, 39, 40, 101, 480, 486, 613}) {
        for (const long bytes : {1L, 3L, 4L}) {
            std::vector<std::uint8_t> line(static_cast<std::size_t>(length * bytes));
            for (auto& value : line) value = static_cast<std::uint8_t>(random());
            for (int level = kGradedLevel; level < GaussianLevels::kCount; ++level) {
                std::vector<std::uint8_t> expected(line.size());
                std::vector<std::uint8_t> out(line.size());
                Plain::Blur(line.data(), expected.data(), length, bytes, level, plain);
                blur(line.data(), out.data(), length, bytes, level, levels);
                ASSERT_EQ(out, expected) << length << " samples at level " << level;
            }
        }
    }
}

TEST(Hue, RunsThroughItsSixSectors) {
    for (int i = -120; i <= 480; ++i) {
        const auto degrees = static_cast<float>(i);
        EXPECT_EQ(hue2rgb(0.2F, 0.7F, degrees), Plain::Hue2Rgb(0.2F, 0.7F, degrees)) << i;
    }
    EXPECT_EQ(hue2rgb(0, 1, 30), 0.5F);
}

}  // namespace
