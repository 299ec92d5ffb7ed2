// The two stages of every photograph: camera type, then effect.
#pragma once

#include <cstdint>

#include "camera_types.h"
#include "effect_tables.h"
#include "pixels.h"
#include "scratch.h"

namespace Kivo::Effects {

/// What the stages depend on.
struct EffectJob {
    CameraType type = CameraType::kKivo;
    PhotoEffect effect = PhotoEffect::kNormal;
    std::uint8_t cameraSelection = kPrimaryCamera;
    int shotCounter = 0;             // frames already taken of a multi-shot photograph
    ConstPixels firstFrame;          // read for MIX with a shot counter of 1 only
    EffectTables* tables = nullptr;  // not owned
    Scratch* scratch = nullptr;      // not owned; the calling thread's own
};

/// Stage 1: what the camera type does. Returns false, and leaves `destination` alone, for a type
/// that does nothing to the pixels.
bool ApplyCameraStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows = {});

/// Whether ApplyCameraStage does something.
bool HasCameraStage(const EffectJob& job);

/// Stage 2: what the photo effect does. Returns false, and leaves `destination` alone, for Normal
/// and every value that is no effect. Edge reads one row beyond `rows` on either side, Fisheye,
/// Concave and Mirror all of the source; Mirror produces everything with the band that holds row 0.
bool ApplyEffectStage(const EffectJob& job, ConstPixels source, Pixels destination, Rows rows = {});

/// Both stages, from `source` to every byte of `destination`. Returns whether a kernel made the
/// pixels: false means that `destination` is a copy of `source`.
bool ApplyEffect(const EffectJob& job, ConstPixels source, Pixels destination);

}  // namespace Kivo::Effects
