// The line blur and its tables.
#include "effects/blur/blur.h"

#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <vector>

#include "effects/blur/gaussian_levels.h"
#include "effects/kernels/hue2rgb.h"
#include "effects/kernels/limit.h"
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
        float sum = 0;
        for (const float weight : weights) sum += weight;
        EXPECT_NEAR(sum, 1, 1e-6);
    }
    EXPECT_EQ(levels.Weights(0)[0], 1.0F);
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
    for (const int length : {1, 2, 8, 9, 17, 18, 19, 20, 27, 39, 40, 101, 480, 613}) {
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

TEST(Blur, ShiftsTheMiddleOfALineAtLevelZeroAndBlursItsEnds) {
    const GaussianLevels levels;
    std::vector<std::uint8_t> line(60);
    for (std::size_t i = 0; i < line.size(); ++i) line[i] = static_cast<std::uint8_t>(i % 2 * 255);
    std::vector<std::uint8_t> out(line.size());
    blur(line.data(), out.data(), 60, 1, 0, levels);
    EXPECT_EQ(std::vector(out.begin() + 9, out.end() - 9),
              std::vector(line.begin(), line.end() - 18));
    for (const std::size_t end : {0U, 4U, 8U, 51U, 55U, 59U}) {
        EXPECT_GT(out[end], 60) << end;
        EXPECT_LT(out[end], 195) << end;
    }
}

TEST(Blur, GradesByTheDistanceFromTheMiddle) {
    EXPECT_EQ(GradedLevel(1600, 800), 0);
    EXPECT_EQ(GradedLevel(1600, 800 - 479), 0);
    EXPECT_EQ(GradedLevel(1600, 800 + 480 + 31), 0);
    EXPECT_EQ(GradedLevel(1600, 800 + 480 + 32), 1);
    EXPECT_EQ(GradedLevel(1600, 9), 9);
    EXPECT_EQ(GradedLevel(480, 470), 9);
    EXPECT_EQ(GradedLevel(486, 9), 9);  // would be a tenth level
    EXPECT_EQ(GradedLevel(19, 0), 6);   // less than one sample a level: one
}

TEST(Limit, ClampsWithoutChangingTheType) {
    EXPECT_EQ(limit(-1), 0);
    EXPECT_EQ(limit(256), 255);
    EXPECT_EQ(limit(17), 17);
    EXPECT_EQ(limit(254.75F), 254.75F);
    EXPECT_EQ(limit(255.25), 255.0);
    EXPECT_EQ(limit(-0.25), 0.0);
}

TEST(Hue, RunsThroughItsSixSectors) {
    for (int i = -120; i <= 480; ++i) {
        const auto degrees = static_cast<float>(i);
        EXPECT_EQ(hue2rgb(0.2F, 0.7F, degrees), Plain::Hue2Rgb(0.2F, 0.7F, degrees)) << i;
    }
    EXPECT_EQ(hue2rgb(0, 1, 30), 0.5F);
}

}  // namespace
