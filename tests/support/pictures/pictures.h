// Pictures to feed kernels with, and comparisons that say which pixels differ.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "effects/pixels/pixels.h"
#include "effects/pixels/vector_level.h"

/// A picture that owns its bytes.
struct Picture {
    Picture(int width, int height, std::uint8_t fill = 0);

    int width;
    int height;
    std::vector<std::uint8_t> bytes;

    Kivo::Effects::ConstPixels View() const { return {bytes.data(), width, height}; }
    Kivo::Effects::Pixels View() { return {bytes.data(), width, height}; }
};

/// What random pictures look like; each finds other faults.
enum class Look {
    kNoise,     // every byte for itself
    kGradient,  // smooth, so that neighbouring values all occur
    kOutliers,  // flat blocks with single pixels of any colour
    kExtremes,  // black and white bytes only
};
inline constexpr Look kLooks[] = {Look::kNoise, Look::kGradient, Look::kOutliers, Look::kExtremes};

Picture RandomPicture(int width, int height, Look look, unsigned seed);

/// One of each look in turn.
std::vector<Picture> RandomPictures(int count, int width, int height, unsigned firstSeed);

/// All 2^24 colours once.
Picture EveryColour();

/// Fails, naming the first few pixels, unless the pictures are the same.
void ExpectSame(const Picture& actual, const Picture& expected, std::string_view what);

/// Runs `check` with the kernels forced to each vector level in turn.
template <class Check>
void AtEveryVectorLevel(Check check) {
    const auto before = Kivo::Effects::CurrentVectorLevel();
    for (const auto level : Kivo::Effects::SupportedVectorLevels()) {
        Kivo::Effects::ForceVectorLevel(level);
        check(static_cast<int>(level));
    }
    Kivo::Effects::ForceVectorLevel(before);
}

struct Size {
    int width;
    int height;
};
/// From a single pixel over less than a blur's reach to sizes that no vector divides.
inline constexpr Size kAwkwardSizes[] = {{1, 1},   {2, 2},   {1, 40},   {40, 1},   {5, 3},
                                         {17, 18}, {18, 19}, {19, 18},  {20, 21},  {33, 77},
                                         {61, 29}, {64, 48}, {129, 67}, {515, 38}, {47, 330}};
