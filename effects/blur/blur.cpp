#include "effects/blur/blur.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>

#include "effects/blur/line_plan.h"

namespace Kivo::Effects {

namespace {

constexpr int kSteps = 50;
constexpr double kStepWidth = 0.02;

/// The bell from step `firstStep` to the last one behind `base`, without what lies beyond `reach`;
/// not normalised.
double SumOfBell(double base, int firstStep, double reach, double divisor) {
    double sum = 0;
    for (int j = firstStep; j <= kSteps; ++j) {
        const double x = base + kStepWidth * j;
        if (x <= reach) sum += std::exp(-(x * x) / divisor);
    }
    return sum;
}

}  // namespace

int gen_convolve_matrix(float radius, float** matrix) {
    const auto sigma = static_cast<float>(0.25 + 0.5 * std::abs(radius));
    const float reach = sigma + sigma;
    const float divisor = reach * sigma;
    const int length = std::max(static_cast<int>(2 * std::ceil(reach - 0.5) + 1), 1);
    const int half = length / 2;
    // What is summed is double; what is stored is float, from the entries' first store on.
    auto* const entries = new float[static_cast<std::size_t>(length)];
    for (int i = 1; i <= half; ++i) {
        const double sum = SumOfBell(static_cast<float>(i) - 0.5F, 1, reach, divisor);
        entries[half + i] = entries[half - i] = static_cast<float>(sum / kSteps);
    }
    // The middle takes one step more, and all of them whatever the reach.
    const double middle = SumOfBell(0.5, 0, std::numeric_limits<double>::infinity(), divisor);
    entries[half] = static_cast<float>(middle / (kSteps + 1));
    const double sum = std::accumulate(entries, entries + length, 0.0);
    std::for_each_n(entries, length,
                    [sum](float& entry) { entry = static_cast<float>(entry / sum); });
    *matrix = entries;
    return length;
}

float* gen_lookup_table(const float* matrix, int length) {
    auto* const table = new float[static_cast<std::size_t>(length) * 256];
    for (int i = 0; i < length; ++i) {
        for (int v = 0; v < 256; ++v) table[i * 256 + v] = matrix[i] * static_cast<float>(v);
    }
    return table;
}

int GradedLevel(int length, int sample) {
    const int distance = std::abs(length / 2 - sample);
    const int sharp = 3 * (length / 10);
    if (distance < sharp) return 0;
    // Lines shorter than 40 samples have less than one sample for a level.
    const int samplesPerLevel = std::max((length / 2 - sharp) / 10, 1);
    return std::min((distance - sharp) / samplesPerLevel, GaussianLevels::kCount - 1);
}

void blur(const std::uint8_t* source, std::uint8_t* destination, int length, long bytes, int level,
          const GaussianLevels& levels) {
    const LinePlan plan(length, level, levels);
    const float* const widest = levels.Products(GaussianLevels::kCount - 1);
    const auto end = [&](int sample, long byte) {
        float sum = 0;
        const int from = std::max(sample - kEndSamples, 0);
        const int to = std::min(sample + kEndSamples, length - 1);
        for (int at = from; at <= to; ++at) {
            sum += widest[(at - sample + kEndSamples) * 256 + source[at * bytes + byte]];
        }
        return static_cast<std::uint8_t>(sum / plan.EndWeight(sample) + 0.5F);
    };
    const auto middle = [&](int sample, long byte, int taps, const float* products) {
        float sum = 0;
        const std::uint8_t* const from = source + (sample - kEndSamples) * bytes + byte;
        for (int k = 0; k < taps; ++k) sum += products[k * 256 + from[k * bytes]];
        return static_cast<std::uint8_t>(sum + 0.5F);
    };
    for (long byte = 0; byte < bytes; ++byte) {
        std::uint8_t* const out = destination + byte;
        for (int s = 0; s < plan.LeadingEnd(); ++s) out[s * bytes] = end(s, byte);
        for (const LinePlan::Segment& segment : plan.Segments()) {
            const float* const products = levels.Products(segment.level);
            const int taps = levels.Length(segment.level);
            for (int s = segment.first; s < segment.last; ++s) {
                out[s * bytes] = middle(s, byte, taps, products);
            }
        }
        for (int s = plan.TrailingBegin(); s < length; ++s) out[s * bytes] = end(s, byte);
    }
}

}  // namespace Kivo::Effects
