// The stages of every photograph: HDR, camera type, effect.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "app/model/camera_types.h"
#include "effects/effect_tables.h"
#include "effects/pixels/pixels.h"
#include "effects/pixels/scratch.h"

namespace Kivo::Effects {

/// What the stages depend on.
struct EffectJob {
    CameraType type = CameraType::kKivo;
    PhotoEffect effect = PhotoEffect::kNormal;
    bool isFront = false;            // of the front camera
    int shotCounter = 0;             // frames already taken of a multi-shot photograph
    ConstPixels firstFrame;          // read for MIX with a shot counter of 1 only
    EffectTables* tables = nullptr;  // not owned
    Scratch* scratch = nullptr;      // not owned; the calling thread's own
};

/// The maps that a job needs for pictures of one size; null where it needs none.
struct EffectMaps {
    std::shared_ptr<const VignetMap> vignet;
    std::shared_ptr<const CircularMap> circular;
};

struct Stage;

/// What makes the pixels of a photograph, stage after stage: HDR where it is wanted, then what the
/// camera type does, then what the photo effect does. The source may still be arriving: rows of the
/// destination are finished as soon as the rows that they are made from are there.
class StageChain {
  public:
    /// `source`, `destination` and what `job` points to outlive the chain, which holds memory of
    /// the job's scratch until it ends. The pictures do not overlap.
    StageChain(const EffectJob& job, bool hdr, ConstPixels source, Pixels destination);

    /// False when the destination becomes a copy of the source.
    bool ChangesPixels() const { return changesPixels_; }

    /// Rows [0, `sourceRows`) of the source are there and stay as they are; never fewer than in the
    /// call before. Returns how many rows of the destination are finished, all of them when all of
    /// the source is there.
    int Advance(int sourceRows);

  private:
    struct Link {
        const Stage* stage;
        ConstPixels source;  // like the destination, placed by the first call of Advance
        Pixels destination;
        int rowsDone = 0;
    };
    static constexpr std::size_t kMostLinks = 3;

    void PlaceLinks(bool isWhole);
    void AdvanceLinks(int sourceRows);

    EffectJob job_;
    ConstPixels source_;
    Pixels destination_;
    EffectMaps maps_;
    int height_;
    int sourceRows_ = 0;  // that are there
    Scratch::Scope scope_;
    std::size_t linkCount_ = 0;
    std::array<Link, kMostLinks> links_;
    bool changesPixels_ = true;
    bool isRowWise_ = true;  // every link reads the rows that it produces and no others
};

/// Builds what the stages of `job` need in its tables for pictures of one size, which otherwise
/// costs the first of them more than the effect.
void PrepareTables(const EffectJob& job, int width, int height);

/// Both stages of `job`, from `source` to every byte of `destination`. Returns whether a kernel
/// made the pixels: false means that `destination` is a copy of `source`.
bool ApplyEffect(const EffectJob& job, ConstPixels source, Pixels destination);

}  // namespace Kivo::Effects
