// One channel of a colour from its hue.
#pragma once

namespace Kivo::Effects {

/// `h` is in degrees, at most one turn out of range; `m1` and `m2` are the channel's bounds.
constexpr float hue2rgb(float m1, float m2, float h) {
    if (h > 360) {
        h = h - 360;
    } else if (h < 0) {
        h = h + 360;
    }
    if (h < 60) return m1 + (m2 - m1) * h / 60;
    if (h < 180) return m2;
    if (h < 240) return m1 + (m2 - m1) * (240 - h) / 60;
    return m1;
}

}  // namespace Kivo::Effects
