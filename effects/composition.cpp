#include "effects/composition.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstring>

#include "effects/pixels/preconditions.h"
#include "effects/types/qshrink.h"

// Frames of ACTION and QUAD are put together before the effects, so effects see one picture, and
// lines are drawn behind them, so no effect touches a line. Places in the picture are those of the
// sensor; the front camera's are chosen so that they read in the same order once it is turned.

namespace Kivo::Effects {

namespace {

constexpr int kStrips = 4;
constexpr int kLastOfFour = 3;  // the shot counter when the fourth frame arrives

constexpr std::array<int, kCameraTypeNames.size()> kFramesOfType{1, 1, 4, 4, 2, 1};

/// Quadrants in the order in which the frames of QUAD fill them: column and row, 0 or 1. Seen in
/// the turned picture of the front camera its order is the same as that of the other.
struct Quadrant {
    int column;
    int row;
};
constexpr std::array<Quadrant, 4> kBackQuadrants{{{0, 0}, {1, 0}, {0, 1}, {1, 1}}};
constexpr std::array<Quadrant, 4> kFrontQuadrants{{{0, 1}, {0, 0}, {1, 1}, {1, 0}}};

void PlaceQuadrant(bool isFront, int index, ConstPixels frame, Pixels accumulation,
                   Scratch& scratch) {
    const auto& quadrants = isFront ? kFrontQuadrants : kBackQuadrants;
    const Quadrant quadrant = quadrants[static_cast<std::size_t>(index)];
    const int width = frame.width / 2;
    const int height = frame.height / 2;
    Scratch::Scope scope(scratch);
    const std::size_t size =
        std::size_t{3} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const Pixels small{scope.Take<std::uint8_t>(size).data(), width, height};
    QShrink(frame, small);
    for (int y = 0; y < height; ++y) {
        std::memcpy(accumulation.Row(quadrant.row * height + y) + 3 * quadrant.column * width,
                    small.Row(y), static_cast<std::size_t>(small.StrideBytes()));
    }
}

/// Strips lie side by side in the stored photograph of either camera, hence rows where it is
/// turned.
void PlaceStrip(bool isFront, int index, ConstPixels frame, Pixels accumulation) {
    if (isFront) {
        const int rows = frame.height / kStrips;
        std::memcpy(accumulation.Row(index * rows), frame.Row(index * rows),
                    static_cast<std::size_t>(frame.StrideBytes() * rows));
        return;
    }
    const int columns = frame.width / kStrips;
    for (int y = 0; y < frame.height; ++y) {
        std::memcpy(accumulation.Row(y) + 3 * index * columns, frame.Row(y) + 3 * index * columns,
                    static_cast<std::size_t>(3 * columns));
    }
}

/// `index` counts through the pixels row by row; outside the picture nothing is drawn.
void Blacken(Pixels picture, std::ptrdiff_t index) {
    if (index < 0 || index >= std::ptrdiff_t{picture.width} * picture.height) return;
    std::memset(picture.data + 3 * index, 0, 3);
}

/// The pixel and the one that precedes it in memory: for the first of a row that is the last of the
/// row above. That spill is deliberate, it belongs to the look.
void BlackenPair(Pixels picture, int x, int y) {
    const std::ptrdiff_t index = x + std::ptrdiff_t{picture.width} * y;
    Blacken(picture, index - 1);
    Blacken(picture, index);
}

/// At a quarter, a half and three quarters.
void DrawStripLines(Pixels picture, bool isFront) {
    const int length = isFront ? picture.height : picture.width;
    for (const int at : {length / kStrips, length / 2, 3 * (length / kStrips)}) {
        if (isFront) {
            for (int x = 0; x < picture.width; ++x) BlackenPair(picture, x, at);
        } else {
            for (int y = 0; y < picture.height; ++y) BlackenPair(picture, at, y);
        }
    }
}

void DrawCross(Pixels picture) {
    for (int y = 0; y < picture.height; ++y) BlackenPair(picture, picture.width / 2, y);
    for (int x = 0; x < picture.width; ++x) {
        const std::ptrdiff_t below = x + std::ptrdiff_t{picture.width} * (picture.height / 2);
        Blacken(picture, below - picture.width);
        Blacken(picture, below);
    }
}

/// Whether the photograph is put together from the last of four frames and the accumulation.
bool IsOfFour(const EffectJob& job) {
    return (job.type == CameraType::kAction || job.type == CameraType::kQuad) &&
           job.shotCounter == kLastOfFour;
}

EffectJob WithFirstFrame(EffectJob job, ConstPixels firstFrame) {
    job.firstFrame = firstFrame;
    return job;
}

}  // namespace

int FramesPerPhotograph(CameraType type) {
    const auto index = static_cast<std::size_t>(type);
    return index < kFramesOfType.size() ? kFramesOfType[index] : 1;
}

bool IsLastFrame(CameraType type, int shotCounter) {
    return shotCounter >= FramesPerPhotograph(type) - 1;
}

bool CacheFrame(CameraType type, bool isFront, int shotCounter, ConstPixels frame,
                Pixels accumulation, Scratch& scratch) {
    assert(shotCounter >= 0 && AreAlikeAndApart(frame, accumulation));
    if (shotCounter > kLastOfFour) return false;
    if (type == CameraType::kQuad) {
        PlaceQuadrant(isFront, shotCounter, frame, accumulation, scratch);
    } else if (type == CameraType::kAction) {
        PlaceStrip(isFront, shotCounter, frame, accumulation);
    } else {
        std::memcpy(accumulation.data, frame.data, frame.SizeBytes());
    }
    return true;
}

void DrawDividingLines(CameraType type, bool isFront, int shotCounter, Pixels picture) {
    if (shotCounter != kLastOfFour) return;
    if (type == CameraType::kAction) DrawStripLines(picture, isFront);
    if (type == CameraType::kQuad) DrawCross(picture);
}

Composition::Composition(const EffectJob& job, bool hdr, ConstPixels frame, Pixels accumulation,
                         Pixels result)
    : job_(WithFirstFrame(job, accumulation)),
      frame_(frame),
      accumulation_(accumulation),
      result_(result),
      chain_(job_, hdr, IsOfFour(job) ? ConstPixels(accumulation) : frame, result) {
    assert(AreAlikeAndApart(frame, result));
    assert(FramesPerPhotograph(job.type) == 1 || AreAlikeAndApart(accumulation, result));
}

int Composition::Advance(int frameRows) {
    if (!IsOfFour(job_)) return chain_.Advance(frameRows);
    if (frameRows < frame_.height) return 0;
    CacheFrame(job_.type, job_.isFront, job_.shotCounter, frame_, accumulation_, *job_.scratch);
    chain_.Advance(frameRows);
    DrawDividingLines(job_.type, job_.isFront, job_.shotCounter, result_);
    return frameRows;
}

void ComposePhotograph(const EffectJob& job, bool hdr, ConstPixels frame, Pixels accumulation,
                       Pixels result) {
    Composition(job, hdr, frame, accumulation, result).Advance(frame.height);
}

}  // namespace Kivo::Effects
