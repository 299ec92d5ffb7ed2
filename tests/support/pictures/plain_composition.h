// A photograph from its frames, pixel by pixel, sharing nothing with the composition under test.
#pragma once

#include <vector>

#include "tests/effects/plain/plain_blur.h"
#include "tests/support/pictures/pictures.h"

struct PlainPhotograph {
    int type = 0;
    int effect = 0;
    bool secondary = false;
    bool hdr = false;
};

/// The picture before it is turned. `frames` are all of the photograph's frames, in order.
Picture ComposePlain(const PlainPhotograph& photograph, const std::vector<Picture>& frames,
                     const Plain::Levels& levels);

/// As it is stored: the front camera's turned a quarter clockwise.
Picture PlainStored(const Picture& picture, bool secondary);
