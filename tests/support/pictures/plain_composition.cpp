#include "tests/support/pictures/plain_composition.h"

#include <array>
#include <cstdint>
#include <utility>

#include "tests/effects/plain/plain_colour.h"

namespace {

using Colour = std::array<std::uint8_t, 3>;

Colour Get(const Picture& picture, int x, int y) {
    const std::size_t at = 3 * (static_cast<std::size_t>(y) * picture.width + x);
    return {picture.bytes[at], picture.bytes[at + 1], picture.bytes[at + 2]};
}

void Set(Picture& picture, int x, int y, Colour colour) {
    const std::size_t at = 3 * (static_cast<std::size_t>(y) * picture.width + x);
    for (std::size_t c = 0; c < 3; ++c) picture.bytes[at + c] = colour[c];
}

/// Four frames as strips: beside each other, or below each other for the secondary camera.
Picture Strips(const std::vector<Picture>& frames, bool secondary) {
    const int width = frames[0].width;
    const int height = frames[0].height;
    Picture out(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int strip = secondary ? y / (height / 4) : x / (width / 4);
            if (strip < 4) Set(out, x, y, Get(frames[strip], x, y));
        }
    }
    return out;
}

/// Four frames, halved, in a two by two grid.
Picture Grid(const std::vector<Picture>& frames, bool secondary) {
    const int width = frames[0].width;
    const int height = frames[0].height;
    // Which frame is where: top left, top right, bottom left, bottom right.
    const std::array<int, 4> order = secondary ? std::array{1, 3, 0, 2} : std::array{0, 1, 2, 3};
    Picture out(width, height);
    for (int y = 0; y < height / 2 * 2; ++y) {
        for (int x = 0; x < width / 2 * 2; ++x) {
            const int column = x / (width / 2);
            const int row = y / (height / 2);
            const Picture& frame = frames[order[2 * row + column]];
            Set(out, x, y, Get(frame, x % (width / 2) * 2, y % (height / 2) * 2));
        }
    }
    return out;
}

void DrawLines(Picture& picture, const PlainPhotograph& photograph) {
    const int width = picture.width;
    const int height = picture.height;
    const auto drawColumn = [&](int x) {
        for (int y = 0; y < height; ++y) Set(picture, x, y, {});
    };
    const auto drawRow = [&](int y) {
        for (int x = 0; x < width; ++x) Set(picture, x, y, {});
    };
    if (photograph.type == 3) {
        for (const int x : {width / 2 - 1, width / 2}) drawColumn(x);
        for (const int y : {height / 2 - 1, height / 2}) drawRow(y);
    }
    if (photograph.type != 2) return;
    const int length = photograph.secondary ? height : width;
    for (const int at : {length / 4, length / 2, 3 * (length / 4)}) {
        if (photograph.secondary) {
            drawRow(at);
            Set(picture, width - 1, at - 1, {});
        } else {
            for (const int x : {at - 1, at}) drawColumn(x);
        }
    }
}

/// Number 1 and those that follow.
constexpr void (*kEffects[])(Plain::ConstPixels in, Plain::Pixels out, bool secondary) = {
    [](auto in, auto out, bool) { Plain::Circular(in, out, false); },
    [](auto in, auto out, bool) { Plain::Circular(in, out, true); },
    [](auto in, auto out, bool) { Plain::BW(in, out); },
    [](auto in, auto out, bool) { Plain::Colorize(in, out, 121, 62, 0.5F); },
    [](auto in, auto out, bool) { Plain::Colorize(in, out, 242, 62, 0.5F); },
    [](auto in, auto out, bool) { Plain::Sepia(in, out); },
    [](auto in, auto out, bool) { Plain::Negative(in, out); },
    [](auto in, auto out, bool) { Plain::Edge(in, out); },
    Plain::Mirror,
};

}  // namespace

Picture ComposePlain(const PlainPhotograph& photograph, const std::vector<Picture>& frames,
                     const Plain::Levels& levels) {
    Picture source = frames.back();
    if (photograph.type == 2) source = Strips(frames, photograph.secondary);
    if (photograph.type == 3) source = Grid(frames, photograph.secondary);
    if (photograph.hdr) {
        const Picture before = source;
        Plain::HDR(before.View(), source.View(), levels);
    }
    Picture staged = source;
    const bool wide = !photograph.secondary && photograph.effect != 3;
    if (photograph.type == 0) Plain::Vignet(source.View(), staged.View(), wide);
    if (photograph.type == 1) Plain::OutFocus(source.View(), staged.View(), levels);
    if (photograph.type == 4) Plain::Mix(frames[0].View(), source.View(), staged.View());
    if (photograph.type == 5) Plain::TiltShift(source.View(), staged.View(), levels);
    Picture out = staged;
    if (photograph.effect != 0) {
        out = Picture(source.width, source.height);
        kEffects[photograph.effect - 1](std::as_const(staged).View(), out.View(),
                                        photograph.secondary);
    }
    DrawLines(out, photograph);
    return out;
}

Picture PlainStored(const Picture& picture, bool secondary) {
    if (!secondary) return picture;
    Picture stored(picture.height, picture.width);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            Set(stored, picture.height - 1 - y, x, Get(picture, x, y));
        }
    }
    return stored;
}
