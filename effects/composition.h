// From the frames of a photograph to the picture that is stored.
#pragma once

#include <cstdint>

#include "app/model/camera_types.h"
#include "effects/dispatch.h"
#include "effects/pixels/pixels.h"
#include "effects/pixels/scratch.h"

namespace Kivo::Effects {

/// Frames that make up one photograph of a type.
int FramesPerPhotograph(CameraType type);

/// Whether the next frame completes its photograph, with `shotCounter` frames cached before it.
bool IsLastFrame(CameraType type, int shotCounter);

/// Puts a frame that is not the last of its photograph where it belongs in `accumulation`, which
/// has the frame's size: a strip for ACTION (columns; rows on the front camera), a quadrant for
/// QUAD, else the whole picture. `shotCounter`, never negative, is advanced by the caller; above 3,
/// nothing is stored and false returned. Bytes that belong to no strip or quadrant (sizes that four
/// or two do not divide) stay as they were: clear the accumulation before the first frame.
bool CacheFrame(CameraType type, bool isFront, int shotCounter, ConstPixels frame,
                Pixels accumulation, Scratch& scratch);

/// The black lines between the strips of ACTION and the quadrants of QUAD (shot counter 3); nothing
/// for other types.
void DrawDividingLines(CameraType type, bool isFront, int shotCounter, Pixels picture);

/// The whole way from the last frame to the finished picture: placement, HDR when `hdr`, the two
/// stages of `job`, dividing lines. The frame may still be arriving.
class Composition {
  public:
    /// `accumulation` holds the frames before the last one: the first frame of MIX, instead of
    /// `job.firstFrame`, or the places of ACTION and QUAD, where the last frame is put as well. It
    /// may be empty for types of one frame. All pictures are of one size and outlive this object,
    /// as what `job` points to does.
    Composition(const EffectJob& job, bool hdr, ConstPixels frame, Pixels accumulation,
                Pixels result);

    /// Rows [0, `frameRows`) of the frame are there; never fewer than in the call before. Returns
    /// how many rows of the result are finished, all of them when all of the frame is there.
    int Advance(int frameRows);

  private:
    EffectJob job_;
    ConstPixels frame_;
    Pixels accumulation_;
    Pixels result_;
    StageChain chain_;
};

/// The same with a frame that is there.
void ComposePhotograph(const EffectJob& job, bool hdr, ConstPixels frame, Pixels accumulation,
                       Pixels result);

}  // namespace Kivo::Effects
