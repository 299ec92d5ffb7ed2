#include "develop/developer.h"

#include <algorithm>
#include <utility>

#include "app/model/photo_description.h"
#include "cmake/product.h"
#include "effects/conversions/rgba.h"
#include "osp/media/picture/exif.h"
#include "osp/media/picture/jpeg_codec.h"
#include "osp/media/picture/jpeg_rows.h"
#include "osp/media/picture/upright.h"

namespace Kivo::Tools {

namespace {

using Osp::Base::Block;
using Osp::Graphics::Dimension;
using Osp::Media::EncodedPicture;
using Osp::Media::PackedSize;
using Osp::Media::PixelLayout;
using Osp::Media::PixelView;

std::string InWords(const Dimension& size) {
    return std::to_string(size.width) + " x " + std::to_string(size.height);
}

constexpr std::size_t kMostKeptBytes = 64U << 20;  // of work memory

/// As it is stored.
Dimension SizeOf(const Recipe& recipe, const Dimension& size) {
    return recipe.isFront ? Dimension{size.height, size.width} : size;
}

}  // namespace

Problem Developer::Load(std::span<const Source> frames) {
    sources_.assign(frames.begin(), frames.end());
    for (std::size_t i = 0; i < sources_.size(); ++i) {
        const Problem problem = frames_[i].Load(sources_[i].bytes, inBackground_);
        if (!problem.empty()) return sources_[i].name + ": " + problem;
        if (frames_[i].Size() != frames_[0].Size()) {
            return sources_[i].name +
                   ": the frames of a photograph have one size, but this one is " +
                   InWords(frames_[i].Size()) + " and the first is " + InWords(frames_[0].Size());
        }
    }
    return {};
}

void Developer::Unload() {
    for (Frame& frame : frames_) frame.Stop();
}

Problem Developer::Develop(const Recipe& recipe, PictureFormat format, const Metadata& metadata,
                           EncodedPicture& developed) {
    if (format == PictureFormat::kJpeg && !recipe.isFront)
        return DevelopRowByRow(recipe, metadata, developed);
    Problem problem = Compose(recipe, [](int, int) {});
    if (!problem.empty()) return problem;
    // A large picture must not fill the memory of a batch: three bytes a pixel all the way, and
    // nothing is kept for the next one.
    if (scratch_.CapacityBytes() > kMostKeptBytes) scratch_.Release();
    if (recipe.isFront) TurnResult();
    const auto pixels =
        PackedView(result_.data(), SizeOf(recipe, frames_[0].Size()), PixelLayout::kRgb);
    return EncodePicture(format, pixels, metadata, developed);
}

/// A quarter clockwise.
void Developer::TurnResult() {
    constexpr int kStoredQuarterCounterclockwise = 6;  // as EXIF numbers it
    Block turned(result_.size());
    Osp::Media::TurnUpright(PackedView(result_.data(), frames_[0].Size(), PixelLayout::kRgb),
                            kStoredQuarterCounterclockwise, turned.data());
    std::swap(result_, turned);
}

Problem Developer::Develop(const Recipe& recipe, PixelView& developed) {
    Problem problem = Compose(recipe, [](int, int) {});
    if (!problem.empty()) return problem;
    const Dimension size = SizeOf(recipe, frames_[0].Size());
    rgba_.Fit(PackedSize(size, PixelLayout::kRgba));
    Effects::ConvertToRgba(View(result_), recipe.isFront, rgba_.data());
    result_ = Block();  // which the pool keeps unless it is huge
    developed = PackedView(rgba_.data(), size, PixelLayout::kRgba);
    return {};
}

/// Encodes rows as they are finished, so that all of it goes on while the frame is being decoded.
Problem Developer::DevelopRowByRow(const Recipe& recipe, const Metadata& metadata,
                                   EncodedPicture& developed) {
    Osp::Media::JpegWriter writer(developed);
    const Dimension size = frames_[0].Size();
    result written = writer.Start(size, PixelLayout::kRgb, metadata.Segments());
    Problem problem = Compose(recipe, [&](int first, int last) {
        const int strideBytes = 3 * size.width;
        if (Osp::Failed(written)) return;
        written = writer.WriteRows(result_.data() + std::ptrdiff_t{strideBytes} * first,
                                   strideBytes, last - first);
    });
    return problem.empty() ? EncodingInWords(written) : problem;
}

Problem Developer::Compose(const Recipe& recipe, const std::function<void(int, int)>& finished) {
    const Dimension size = frames_[0].Size();
    Problem problem = CheckSize(recipe, size);
    if (!problem.empty()) return problem;
    result_.Fit(PackedSize(size, PixelLayout::kRgb));

    Effects::EffectJob job{recipe.type, recipe.effect, recipe.isFront, 0, {}, &tables_, &scratch_};
    job.shotCounter = Effects::FramesPerPhotograph(recipe.type) - 1;
    Effects::PrepareTables(job, size.width, size.height);  // while frames are being decoded
    problem = CacheFrames(job);
    if (!problem.empty()) return problem;

    const std::size_t last = FrameIndex(job.shotCounter);
    Effects::Composition composition(job, recipe.hdr, frames_[last].View(), View(accumulation_),
                                     View(result_));
    for (int rows = 0, done = 0; done < size.height;) {
        rows = frames_[last].WaitForMore(rows);
        if (rows == Frame::kDamaged) return DamageOf(last);
        const int doneNow = composition.Advance(rows);
        finished(done, doneNow);
        done = doneNow;
    }
    return {};
}

Problem Developer::CacheFrames(const Effects::EffectJob& job) {
    if (job.shotCounter == 0) return {};
    accumulation_.Fit(PackedSize(frames_[0].Size(), PixelLayout::kRgb));
    std::fill_n(accumulation_.data(), accumulation_.size(), std::uint8_t{0});
    for (int number = 0; number < job.shotCounter; ++number) {
        const std::size_t index = FrameIndex(number);
        if (!frames_[index].WaitForAll()) return DamageOf(index);
        Effects::CacheFrame(job.type, job.isFront, number, frames_[index].View(),
                            View(accumulation_), scratch_);
    }
    return {};
}

std::vector<Problem> Developer::Warnings() const {
    std::vector<Problem> warnings;
    for (std::size_t i = 0; i < sources_.size(); ++i) {
        if (!frames_[i].WaitForAll() || frames_[i].Oddity().empty()) continue;
        warnings.push_back(sources_[i].name + ": warning: " + frames_[i].Oddity() +
                           ", but the picture is whole");
    }
    return warnings;
}

Metadata Developer::MakeMetadata(const Recipe& recipe, PictureFormat format) const {
    Metadata metadata;
    if (format == PictureFormat::kPpm) return metadata;
    metadata.colourProfile = ReadColourProfile(sources_[0].bytes);
    if (format == PictureFormat::kPng) return metadata;
    Osp::Media::ExifInfo info;
    info.description =
        ComposePhotoDescription(recipe.type, recipe.effect, ZoomLevel::k1X, recipe.hdr);
    info.software = Kivo::kProductName;
    info.orientation = 1;
    info.size = SizeOf(recipe, frames_[0].Size());
    metadata.exif = Osp::Media::RebuildExifSegment(sources_[0].bytes, info);
    return metadata;
}

std::size_t Developer::FrameIndex(int number) const {
    return static_cast<std::size_t>(number) % sources_.size();
}

Problem Developer::DamageOf(std::size_t index) const {
    return sources_[index].name + ": " + DamageInWords(frames_[index].Failure());
}

Effects::Pixels Developer::View(Block& block) const {
    const auto [width, height] = frames_[0].Size();
    return {block.data(), width, height};
}

}  // namespace Kivo::Tools
