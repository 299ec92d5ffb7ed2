// A photograph from its frames, pixel by pixel, sharing nothing with the composition under test.
#pragma once

#include <cstdint>
#include <vector>

#include "pictures.h"
#include "plain_blur.h"

struct PlainPhotograph {
    int type = 0;
    int effect = 0;
    bool secondary = false;
    bool hdr = false;
};

/// The picture before it is turned. `frames` are all of the photograph's frames, in order.
Picture ComposePlain(const PlainPhotograph& photograph, const std::vector<Picture>& frames,
                     const Plain::Levels& levels);

/// The 32-bit picture that is stored; `width` and `height` become its size.
std::vector<std::uint8_t> PlainRgba(const Picture& picture, bool secondary, int& width,
                                    int& height);
