// The bitmaps of the chooser.
#pragma once

#include <vector>

#include <osp/base/result.h>
#include <osp/graphics/bitmap.h>
#include <osp/media/image.h>

#include "app/model/camera_types.h"
#include "ui/forms/scaled_picture.h"

namespace Kivo {

class OptionPictures {
  public:
    /// Decodes all bitmaps; the first failure is returned.
    result Load(Osp::Media::Image& decoder);

    /// `offset` places after `type` or `effect`, around the end: -1 is the one before.
    ScaledPicture& Camera(CameraType type, int offset);
    /// As the camera type offers it: one that it does without looks it.
    ScaledPicture& Effect(CameraType type, PhotoEffect effect, int offset);

    const Osp::Graphics::Bitmap& Ground() const { return ground_; }
    const Osp::Graphics::Bitmap& Arrow() const { return arrow_; }
    /// Of the button that leads back.
    const Osp::Graphics::Bitmap& Return() const { return return_; }
    const Osp::Graphics::Bitmap& ReturnPressed() const { return returnPressed_; }

  private:
    Osp::Graphics::Bitmap ground_;
    std::vector<ScaledPicture> cameras_;
    std::vector<ScaledPicture> effects_;
    std::vector<ScaledPicture> restrictedEffects_;
    Osp::Graphics::Bitmap return_;
    Osp::Graphics::Bitmap returnPressed_;
    Osp::Graphics::Bitmap arrow_;
};

}  // namespace Kivo
