#include "osp/media/camera/white_balance.h"

#include <algorithm>

namespace Osp::Media {

void ApplyGains(const ColorGains& gains, const std::uint8_t* source, std::uint8_t* target,
                int pixelCount) {
    const auto amplify = [](int channel, int gain) {
        return static_cast<std::uint8_t>(std::min(255, (channel * gain + 128) >> 8));
    };
    for (int i = 0; i < pixelCount * 4; i += 4) {
        target[i] = amplify(source[i], gains.blue);
        target[i + 1] = amplify(source[i + 1], gains.green);
        target[i + 2] = amplify(source[i + 2], gains.red);
        target[i + 3] = source[i + 3];
    }
}

}  // namespace Osp::Media
