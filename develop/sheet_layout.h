// Where things lie on a contact sheet.
#pragma once

#include <algorithm>

#include <osp/graphics/dimension.h>
#include <osp/graphics/rectangle.h>

#include "app/model/camera_types.h"

namespace Kivo::Tools {

/// A film from top to bottom for each camera type, with its label above and a frame for each
/// effect.
class SheetLayout {
  public:
    static constexpr int kTypes = static_cast<int>(kCameraTypeNames.size());
    static constexpr int kEffects = static_cast<int>(kPhotoEffectNames.size());

    // In pixels.
    static constexpr int kLabelHeight = 52;
    static constexpr int kPerforation = 34;  // the border of a film on either side
    static constexpr int kFrameWidth = 240;
    static constexpr int kCaptionHeight = 28;
    static constexpr int kFilmWidth = kFrameWidth + 2 * kPerforation;

    /// For pictures of the shape of `picture`, within limits.
    explicit SheetLayout(const Osp::Graphics::Dimension& picture)
        : frameHeight_(std::clamp(kFrameWidth * picture.height / picture.width, kLowestFrame,
                                  kHighestFrame)) {}

    Osp::Graphics::Dimension Sheet() const {
        return {2 * kMargin + kTypes * kFilmWidth + (kTypes - 1) * kFilmGap,
                Film(0).y + Film(0).height + kMargin};
    }
    Osp::Graphics::Rectangle Label(int type) const {
        return {FilmLeft(type), kMargin, kFilmWidth, kLabelHeight};
    }
    Osp::Graphics::Rectangle Film(int type) const {
        return {FilmLeft(type), kMargin + kLabelHeight + kLabelGap, kFilmWidth,
                kEffects * FrameStep() + kFrameGap};
    }
    Osp::Graphics::Rectangle Frame(int type, int effect) const {
        return {FilmLeft(type) + kPerforation, Film(type).y + kFrameGap + effect * FrameStep(),
                kFrameWidth, frameHeight_};
    }
    Osp::Graphics::Rectangle Caption(int type, int effect) const {
        return {FilmLeft(type) + kPerforation, Frame(type, effect).y + frameHeight_, kFrameWidth,
                kCaptionHeight};
    }

  private:
    static constexpr int kMargin = 32;
    static constexpr int kLabelGap = 14;
    static constexpr int kFilmGap = 24;
    static constexpr int kLowestFrame = 60;
    static constexpr int kHighestFrame = 400;
    static constexpr int kFrameGap = 10;

    static int FilmLeft(int type) { return kMargin + type * (kFilmWidth + kFilmGap); }
    int FrameStep() const { return frameHeight_ + kCaptionHeight + kFrameGap; }

    int frameHeight_;
};

}  // namespace Kivo::Tools
