#include "dispatch.h"

#include <array>
#include <cstddef>
#include <cstring>

#include "bw.h"
#include "colorize.h"
#include "edge.h"
#include "mirror.h"
#include "mix.h"
#include "negative.h"
#include "out_focus.h"
#include "sepia.h"
#include "tilt_shift.h"

namespace Kivo::Effects {

namespace {

/// Null in the tables below where nothing happens to the pixels.
using Stage = void (*)(const EffectJob&, ConstPixels, Pixels, Rows);

constexpr int kBeachHue = 121;
constexpr int kFallHue = 242;
constexpr int kSaturation = 62;
constexpr float kOpacity = 0.5F;

void VignetStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows) {
    // Black and white takes the narrow border of the front camera.
    const bool wide =
        job.cameraSelection != kSecondaryCamera && job.effect != PhotoEffect::kBlackWhite;
    Vignet(source, destination, *job.tables->Vignet(source.width, source.height, wide),
           *job.scratch, rows);
}

void OutFocusStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows) {
    OutFocus(source, destination, job.tables->Levels(), *job.scratch, rows);
}

void MixStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows) {
    Mix(job.firstFrame, source, destination, rows);
}

void TiltShiftStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows) {
    TiltShift(source, destination, job.tables->Levels(), *job.scratch, rows);
}

template <bool concave>
void CircularStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows) {
    Circular(source, destination, *job.tables->Circular(source.width, source.height, concave),
             rows);
}

void BwStage(const EffectJob&, ConstPixels source, Pixels destination, Rows rows) {
    BW(source, destination, rows);
}

template <int hue>
void ColorizeStage(const EffectJob&, ConstPixels source, Pixels destination, Rows rows) {
    Colorize(source, destination, hue, kSaturation, kOpacity, rows);
}

void SepiaStage(const EffectJob&, ConstPixels source, Pixels destination, Rows rows) {
    Sepia(source, destination, rows);
}

void NegativeStage(const EffectJob&, ConstPixels source, Pixels destination, Rows rows) {
    Negative(source, destination, rows);
}

void EdgeStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows) {
    Edge(source, destination, *job.scratch, rows);
}

void MirrorStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows) {
    if (rows.first > 0) return;
    // The middle line of an odd size, which nothing is reflected onto, is black.
    if (source.width % 2 != 0 || source.height % 2 != 0) {
        std::memset(destination.data, 0, destination.SizeBytes());
    }
    Mirror(source, destination, job.cameraSelection != kPrimaryCamera);
}

constexpr std::array<Stage, kCameraTypeNames.size()> kCameraStages{
    VignetStage,    // KIVO
    OutFocusStage,  // DSLR
    nullptr,        // ACTION
    nullptr,        // QUAD
    MixStage,       // MIX, with one frame taken
    TiltShiftStage  // TILT
};
static_assert(kCameraStages.size() == 6 && kCameraStages.back() != nullptr);

constexpr std::array<Stage, kPhotoEffectNames.size()> kEffectStages{
    nullptr,                   // Normal
    CircularStage<false>,      // Fisheye
    CircularStage<true>,       // Concave
    BwStage,                   // B&W
    ColorizeStage<kBeachHue>,  // Beach
    ColorizeStage<kFallHue>,   // Fall
    SepiaStage,                // Sepia
    NegativeStage,             // Negative
    EdgeStage,                 // Edge
    MirrorStage                // Mirror
};
static_assert(kEffectStages.size() == 10 && kEffectStages.back() != nullptr);

template <std::size_t size, class Enum>
Stage StageOf(const std::array<Stage, size>& stages, Enum value) {
    const auto index = static_cast<std::size_t>(value);
    return index < size ? stages[index] : nullptr;
}

Stage CameraStageOf(const EffectJob& job) {
    if (job.type == CameraType::kMix && job.shotCounter != 1) return nullptr;
    return StageOf(kCameraStages, job.type);
}

/// Rows that go through both stages together, so that the second finds them in the cache.
constexpr int kRowsTogether = 64;

/// Whether both stages need only the rows that they produce.
bool IsRowWise(const EffectJob& job) {
    return (job.type == CameraType::kKivo || job.type == CameraType::kMix) &&
           job.effect >= PhotoEffect::kBlackWhite && job.effect <= PhotoEffect::kNegative;
}

}  // namespace

bool HasCameraStage(const EffectJob& job) {
    return CameraStageOf(job) != nullptr;
}

bool ApplyCameraStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows) {
    const Stage stage = CameraStageOf(job);
    if (stage != nullptr) stage(job, source, destination, rows);
    return stage != nullptr;
}

bool ApplyEffectStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows) {
    const Stage stage = StageOf(kEffectStages, job.effect);
    if (stage != nullptr) stage(job, source, destination, rows);
    return stage != nullptr;
}

bool ApplyEffect(const EffectJob& job, ConstPixels source, Pixels destination) {
    const Stage camera = CameraStageOf(job);
    const Stage effect = StageOf(kEffectStages, job.effect);
    if (effect == nullptr) {
        if (ApplyCameraStage(job, source, destination)) return true;
        std::memcpy(destination.data, source.data, source.SizeBytes());
        return false;
    }
    if (camera == nullptr) return ApplyEffectStage(job, source, destination);
    Scratch::Scope scope(*job.scratch);
    const Pixels between{scope.Take<std::uint8_t>(source.SizeBytes()).data(), source.width,
                         source.height};
    const int together = IsRowWise(job) ? kRowsTogether : source.height;
    for (int y = 0; y < source.height; y += together) {
        camera(job, source, between, {y, y + together});
        effect(job, between, destination, {y, y + together});
    }
    return true;
}

}  // namespace Kivo::Effects
