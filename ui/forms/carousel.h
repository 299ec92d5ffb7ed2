// Two rows that turn: where their pictures stand, and what a turn chooses.
#pragma once

#include <vector>

#include <osp/graphics/point.h>
#include <osp/graphics/rectangle.h>

#include "app/model/camera_types.h"

namespace Kivo {

/// All that differs between the rows. A row is a line of slots at even distances, of which one is
/// the centre; it turns by one slot in steps of `shift` pixels.
struct Carousel {
    int before;       // slots to the left of the centre
    int left;         // of the first slot, at rest
    int spacing;      // from one slot to the next
    int shift;        // a step
    int steps;        // of a turn; after the last one the row is at rest again
    int firstOrigin;  // what tells how many slots there are: those whose origin, a spacing apart,
    int lastOrigin;   // is not beyond the last
    Osp::Graphics::Rectangle centre;  // at rest
    int sideTop;                      // of all others, at rest
    Osp::Graphics::Dimension side;
    int rise;                         // a step, of the slot that comes to the centre
    Osp::Graphics::Dimension growth;  // likewise; the one that leaves shrinks by as much
};

inline constexpr Carousel kCameraCarousel{
    2, -264, 280, 26, 10, -57, 1006, {254, 38, 292, 258}, 96, {212, 188}, 6, {8, 7}};
inline constexpr Carousel kEffectCarousel{
    3, -144, 160, 32, 5, -25, 918, {315, 310, 170, 170}, 331, {120, 120}, 5, {10, 10}};

struct CarouselSlot {
    int offset;  // of what it shows from what is current
    Osp::Graphics::Rectangle bounds;

    friend bool operator==(const CarouselSlot&, const CarouselSlot&) = default;
};

/// The slots after that many steps, 0 to `steps`, of a turn, from left to right. The centre slot is
/// at its place at rest before the first and after the last step.
std::vector<CarouselSlot> SlotsOf(const Carousel& carousel, int step, bool toRight);

/// What a turn of the cameras leads to: to the right to the one before. A type that no camera has
/// counts as the first.
CameraType TypeBeside(CameraType type, bool toRight);

/// The same of the effects; a camera that does without some of them turns from one end of a gap to
/// the other.
PhotoEffect EffectBeside(CameraType type, PhotoEffect effect, bool toRight);

}  // namespace Kivo
