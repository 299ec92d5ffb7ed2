// From the files of a photograph's frames to the developed picture.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "develop/pictures/frame.h"
#include "develop/pictures/picture_format.h"
#include "develop/problem.h"
#include "develop/recipe.h"
#include "effects/composition.h"
#include "effects/effect_tables.h"
#include "effects/pixels/scratch.h"

namespace Kivo::Tools {

/// The bytes of a file and the name to call it by when something is wrong with it.
struct Source {
    std::string name;
    Bytes bytes;  // not owned
};

/// Keeps its memory from one photograph to the next. One thread at a time.
class Developer {
  public:
    static constexpr std::size_t kMostFrames = 4;

    /// `tables` is not owned and may serve several developers. With `inBackground`, frames are
    /// decoded in other threads while they are developed; the result is the same.
    Developer(Effects::EffectTables& tables, bool inBackground)
        : tables_(tables), inBackground_(inBackground) {}

    /// Takes one to four frames of one size. Their bytes are read until Unload, also after a
    /// problem.
    Problem Load(std::span<const Source> frames);
    /// Lets go of the frames' bytes, which may mean to wait until some have been decoded.
    void Unload();

    /// What the developed photograph's file will say; reads the first frame's bytes.
    Metadata MakeMetadata(const Recipe& recipe, PictureFormat format) const;
    /// Whether nothing but MakeMetadata reads the frames' bytes any more.
    bool HasRead() const { return !inBackground_; }

    /// Develops the loaded frames, any number of times. A type of more frames than there are takes
    /// them in turn. The front camera's photographs come out turned, as it stores them.
    Problem Develop(const Recipe& recipe, PictureFormat format, const Metadata& metadata,
                    Osp::Media::EncodedPicture& developed);

    /// The same as pixels of four bytes, which stay until the next call.
    Problem Develop(const Recipe& recipe, Osp::Media::PixelView& developed);

    /// What is odd about the files of a photograph that could be developed all the same.
    std::vector<Problem> Warnings() const;

  private:
    /// Calls finished(first, last) whenever these rows of `result_` are there.
    Problem Compose(const Recipe& recipe, const std::function<void(int, int)>& finished);
    Problem CacheFrames(const Effects::EffectJob& job);
    Problem DevelopRowByRow(const Recipe& recipe, const Metadata& metadata,
                            Osp::Media::EncodedPicture& developed);
    void TurnResult();
    std::size_t FrameIndex(int number) const;
    Problem DamageOf(std::size_t index) const;
    Effects::Pixels View(Osp::Base::Block& block) const;

    Effects::EffectTables& tables_;
    bool inBackground_;
    Effects::Scratch scratch_;
    std::vector<Source> sources_;
    std::array<Frame, kMostFrames> frames_;
    Osp::Base::Block accumulation_;
    Osp::Base::Block result_;
    Osp::Base::Block rgba_;
};

}  // namespace Kivo::Tools
