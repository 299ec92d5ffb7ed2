#include "effects/dispatch.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstring>
#include <limits>
#include <utility>

#include "effects/blur/blur.h"
#include "effects/kernels/bw.h"
#include "effects/kernels/colorize.h"
#include "effects/kernels/edge.h"
#include "effects/kernels/mirror.h"
#include "effects/kernels/negative.h"
#include "effects/kernels/sepia.h"
#include "effects/pixels/preconditions.h"
#include "effects/types/hdr.h"
#include "effects/types/mix.h"
#include "effects/types/out_focus.h"
#include "effects/types/tilt_shift.h"

// A chain is up to three links, each from the picture that the one before it has made so far. Rows
// arrive from above, and a link that reads `reach` rows beyond those it makes lags behind by as
// many, until its source is whole. What needs the whole picture has a reach beyond any height.
//
// Pictures in between cost fresh memory, which costs more than arithmetic: a link that reads no
// other rows than it makes works in place on the picture of the link before it, so the last picture
// of the chain is the destination and another one is taken only in front of a link with a reach.
// The first link reads the source, which is never written.
//
// Only where all links are without reach do rows go through them in small groups, which stay in the
// cache from link to link. With a reach, a call per group would redo the reach of every group.

namespace Kivo::Effects {

/// A kernel with its arguments.
struct Stage {
    void (*run)(const EffectJob&, const EffectMaps&, ConstPixels, Pixels, Rows) = nullptr;
    int reach = 0;  // rows that it reads beyond those it produces, on either side
};

namespace {

constexpr int kWholePicture = std::numeric_limits<int>::max();

constexpr int kBeachHue = 121;
constexpr int kFallHue = 242;
constexpr int kSaturation = 62;
constexpr float kOpacity = 0.5F;

/// Black and white takes the narrow border of the front camera: deliberate, it is the look.
bool HasWideBorder(const EffectJob& job) {
    return !job.isFront && job.effect != PhotoEffect::kBlackWhite;
}

void VignetStage(const EffectJob& job, const EffectMaps& maps, ConstPixels source,
                 Pixels destination, Rows rows) {
    Vignet(source, destination, *maps.vignet, *job.scratch, rows);
}

void OutFocusStage(const EffectJob& job, const EffectMaps&, ConstPixels source, Pixels destination,
                   Rows rows) {
    OutFocus(source, destination, job.tables->Levels(), *job.scratch, rows);
}

void MixStage(const EffectJob& job, const EffectMaps&, ConstPixels source, Pixels destination,
              Rows rows) {
    Mix(job.firstFrame, source, destination, rows);
}

void TiltShiftStage(const EffectJob& job, const EffectMaps&, ConstPixels source, Pixels destination,
                    Rows rows) {
    TiltShift(source, destination, job.tables->Levels(), *job.scratch, rows);
}

void CircularStage(const EffectJob&, const EffectMaps& maps, ConstPixels source, Pixels destination,
                   Rows rows) {
    Circular(source, destination, *maps.circular, rows);
}

void BwStage(const EffectJob&, const EffectMaps&, ConstPixels source, Pixels destination,
             Rows rows) {
    BW(source, destination, rows);
}

template <int hue>
void ColorizeStage(const EffectJob&, const EffectMaps&, ConstPixels source, Pixels destination,
                   Rows rows) {
    Colorize(source, destination, hue, kSaturation, kOpacity, rows);
}

void SepiaStage(const EffectJob&, const EffectMaps&, ConstPixels source, Pixels destination,
                Rows rows) {
    Sepia(source, destination, rows);
}

void NegativeStage(const EffectJob&, const EffectMaps&, ConstPixels source, Pixels destination,
                   Rows rows) {
    Negative(source, destination, rows);
}

void EdgeStage(const EffectJob& job, const EffectMaps&, ConstPixels source, Pixels destination,
               Rows rows) {
    Edge(source, destination, *job.scratch, rows);
}

void MirrorStage(const EffectJob& job, const EffectMaps&, ConstPixels source, Pixels destination,
                 Rows) {
    // The middle line of an odd size, which nothing is reflected onto, is black.
    if (source.width % 2 != 0 || source.height % 2 != 0) {
        std::memset(destination.data, 0, destination.SizeBytes());
    }
    Mirror(source, destination, job.isFront);
}

void HdrStage(const EffectJob& job, const EffectMaps&, ConstPixels source, Pixels destination,
              Rows rows) {
    HDR(source, destination, job.tables->Levels(), *job.scratch, rows);
}

void Copy(const EffectJob&, const EffectMaps&, ConstPixels source, Pixels destination, Rows rows) {
    std::memcpy(destination.Row(rows.first), source.Row(rows.first),
                static_cast<std::size_t>(source.StrideBytes() * (rows.last - rows.first)));
}

constexpr std::array<Stage, kCameraTypeNames.size()> kCameraStages{{
    {VignetStage, 0},               // KIVO
    {OutFocusStage, kEndSamples},   // DSLR
    {},                             // ACTION
    {},                             // QUAD
    {MixStage, 0},                  // MIX, with one frame taken
    {TiltShiftStage, kEndSamples},  // TILT
}};
static_assert(kCameraStages.size() == 6 && kCameraStages.back().run != nullptr);

constexpr std::array<Stage, kPhotoEffectNames.size()> kEffectStages{{
    {},                              // Normal
    {CircularStage, kWholePicture},  // Fisheye
    {CircularStage, kWholePicture},  // Concave
    {BwStage, 0},                    // B&W
    {ColorizeStage<kBeachHue>, 0},   // Beach
    {ColorizeStage<kFallHue>, 0},    // Fall
    {SepiaStage, 0},                 // Sepia
    {NegativeStage, 0},              // Negative
    {EdgeStage, 1},                  // Edge
    {MirrorStage, kWholePicture},    // Mirror
}};
static_assert(kEffectStages.size() == 10 && kEffectStages.back().run != nullptr);

constexpr Stage kHdrStage{HdrStage, kEndSamples};
constexpr Stage kCopyStage{Copy, 0};

/// Null where nothing happens to the pixels.
template <std::size_t size, class Enum>
const Stage* StageIn(const std::array<Stage, size>& stages, Enum value) {
    const auto index = static_cast<std::size_t>(value);
    return index < size && stages[index].run != nullptr ? &stages[index] : nullptr;
}

const Stage* CameraStageOf(const EffectJob& job) {
    if (job.type == CameraType::kMix && job.shotCounter != 1) return nullptr;
    return StageIn(kCameraStages, job.type);
}

EffectMaps MapsFor(const EffectJob& job, int width, int height) {
    assert(job.tables != nullptr);
    EffectMaps maps;
    if (job.type == CameraType::kKivo) {
        maps.vignet = job.tables->Vignet(width, height, HasWideBorder(job));
    }
    if (job.effect == PhotoEffect::kFisheye || job.effect == PhotoEffect::kConcave) {
        maps.circular = job.tables->Circular(width, height, job.effect == PhotoEffect::kConcave);
    }
    return maps;
}

/// Rows that go through all stages together, so that each finds them in the cache.
constexpr int kRowsTogether = 64;

}  // namespace

StageChain::StageChain(const EffectJob& job, bool hdr, ConstPixels source, Pixels destination)
    : job_(job),
      source_(source),
      destination_(destination),
      maps_(MapsFor(job, source.width, source.height)),
      height_(source.height),
      scope_(*job.scratch) {
    assert(AreAlikeAndApart(source, destination));
    const auto add = [this](const Stage* stage) {
        if (stage == nullptr) return;
        assert(linkCount_ < kMostLinks);
        links_[linkCount_++].stage = stage;
        isRowWise_ = isRowWise_ && stage->reach == 0;
    };
    if (hdr) add(&kHdrStage);
    add(CameraStageOf(job));
    add(StageIn(kEffectStages, job.effect));
    changesPixels_ = linkCount_ > 0;
    if (!changesPixels_) add(&kCopyStage);
}

void StageChain::PlaceLinks(bool isWhole) {
    Pixels target = destination_;
    Pixels spare{nullptr, target.width, target.height};
    for (std::size_t i = linkCount_; i-- > 0;) {
        links_[i].destination = target;
        if (i > 0 && links_[i].stage->reach > 0) {
            std::swap(target, spare);
            if (target.data == nullptr || !isWhole) {
                target.data = scope_.Take<std::uint8_t>(target.SizeBytes()).data();
            }
        }
        links_[i].source = i > 0 ? target : source_;
    }
}

int StageChain::Advance(int sourceRows) {
    assert(sourceRows >= sourceRows_ && sourceRows <= height_);
    if (links_[0].destination.data == nullptr) PlaceLinks(sourceRows == height_);
    sourceRows_ = sourceRows;
    const int together = isRowWise_ ? kRowsTogether : height_;
    for (int rows = std::min(links_[0].rowsDone + together, sourceRows); rows < sourceRows;
         rows += together) {
        AdvanceLinks(rows);
    }
    AdvanceLinks(sourceRows);
    return links_[linkCount_ - 1].rowsDone;
}

void StageChain::AdvanceLinks(int sourceRows) {
    int rows = sourceRows;
    for (std::size_t i = 0; i < linkCount_; ++i) {
        Link& link = links_[i];
        if (rows < height_) rows = std::max(rows - link.stage->reach, link.rowsDone);
        if (rows > link.rowsDone) {
            link.stage->run(job_, maps_, link.source, link.destination, {link.rowsDone, rows});
        }
        link.rowsDone = rows;
    }
}

void PrepareTables(const EffectJob& job, int width, int height) {
    (void)MapsFor(job, width, height);
}

bool ApplyEffect(const EffectJob& job, ConstPixels source, Pixels destination) {
    StageChain chain(job, false, source, destination);
    chain.Advance(source.height);
    return chain.ChangesPixels();
}

}  // namespace Kivo::Effects
