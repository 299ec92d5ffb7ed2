#include "backends/scene/scene_camera.h"

#include <algorithm>
#include <chrono>
#include <libyuv/rotate_argb.h>
#include <mutex>
#include <utility>

#include "backends/scene/scene_harbour.h"
#include "backends/scene/scene_portrait.h"
#include "osp/media/camera/camera_pictures.h"

// Most of the scene stands still: it is drawn once for each size and zoom and copied for every
// frame, over which only what moves is drawn. Frames and stills are drawn by different workers at
// the same time, so each size has a backdrop and a lock of its own; a backdrop that is in use stays
// while the next one is drawn. Nothing random and no clock goes into a picture.

namespace Osp::Media {

namespace {

using Base::ByteBuffer;
using Graphics::Dimension;
using Graphics::Surface;

// Short enough not to be felt, long enough that focusing is a state of its own.
constexpr std::chrono::milliseconds kFocusTime{2};

struct Subject {
    Dimension world;
    void (*draw)(Surface&, const Scene::View&);
    void (*drawMotion)(Surface&, const Scene::View&, long long);
};
constexpr Subject kHarbour{Scene::kHarbourWorld, Scene::DrawHarbour, Scene::DrawHarbourMotion};
constexpr Subject kPortrait{Scene::kPortraitWorld, Scene::DrawPortrait, Scene::DrawPortraitMotion};

/// The still part of the picture at one size and zoom, drawn when first asked for.
class Backdrop {
  public:
    std::shared_ptr<const Surface> Get(const Dimension& size, int zoomStep,
                                       const auto& drawBackdrop) {
        const std::lock_guard lock(mutex_);
        if (surface_ == nullptr || surface_->GetDimension() != size || zoomStep_ != zoomStep) {
            surface_ = nullptr;  // gives its memory back for the next
            surface_ = drawBackdrop();
            zoomStep_ = zoomStep;
        }
        return surface_;
    }

  private:
    std::mutex mutex_;
    std::shared_ptr<const Surface> surface_;
    int zoomStep_ = 0;
};

}  // namespace

/// Draws at both sizes that the camera delivers; what it keeps survives power cycles.
class SceneCamera::Scenery {
  public:
    explicit Scenery(CameraSelection selection)
        : selection_(selection),
          subject_(selection == CameraSelection::kPrimary ? kHarbour : kPortrait) {}

    void MakeFrame(const StreamSettings& settings, long long number, ByteBuffer& frame) {
        const Surface picture =
            Draw(previewBackdrop_, settings.previewSize, settings.zoomStep, number);
        WriteFrame(picture, GainsOf(settings.whiteBalance), frame);
    }
    result MakeStill(const StreamSettings& settings, long long number, ByteBuffer& jpeg) {
        Surface picture = Draw(stillBackdrop_, settings.stillSize, settings.zoomStep, number);
        return WriteStill(picture, GainsOf(settings.whiteBalance), jpeg);
    }
    void PrepareStill(const StreamSettings& settings) {
        (void)GetBackdrop(stillBackdrop_, settings.stillSize, settings.zoomStep);
    }

  private:
    Scene::View ViewOf(const Dimension& size, int zoomStep) const {
        return Scene::MakeView(UprightSize(size, selection_), subject_.world, zoomStep);
    }
    std::shared_ptr<const Surface> GetBackdrop(Backdrop& backdrop, const Dimension& size,
                                               int zoomStep);
    Surface Draw(Backdrop& backdrop, const Dimension& size, int zoomStep, long long number);

    const CameraSelection selection_;
    const Subject subject_;
    Backdrop previewBackdrop_;
    Backdrop stillBackdrop_;
};

std::shared_ptr<const Surface> SceneCamera::Scenery::GetBackdrop(Backdrop& backdrop,
                                                                 const Dimension& size,
                                                                 int zoomStep) {
    return backdrop.Get(size, zoomStep, [&] {
        const Scene::View view = ViewOf(size, zoomStep);
        auto upright = std::make_shared<Surface>(view.size, Surface::Kind::kOpaque);
        subject_.draw(*upright, view);
        cairo_surface_flush(upright->Cairo());
        if (selection_ == CameraSelection::kPrimary) return upright;
        auto turned = std::make_shared<Surface>(size, Surface::Kind::kOpaque);
        libyuv::ARGBRotate(upright->Data(), upright->StrideBytes(), turned->Data(),
                           turned->StrideBytes(), view.size.width, view.size.height,
                           libyuv::kRotate270);
        return turned;
    });
}

Surface SceneCamera::Scenery::Draw(Backdrop& backdrop, const Dimension& size, int zoomStep,
                                   long long number) {
    const auto scenery = GetBackdrop(backdrop, size, zoomStep);
    Surface picture(size, Surface::Kind::kOpaque);
    std::copy_n(scenery->Data(), PackedSize(size, PixelLayout::kBgrx), picture.Data());
    picture.MarkDirty();
    subject_.drawMotion(picture, ViewOf(size, zoomStep), number);
    cairo_surface_flush(picture.Cairo());
    return picture;
}

SceneCamera::SceneCamera(CameraSelection selection)
    : GeneratedCamera("scene", selection), scenery_(std::make_shared<Scenery>(selection)) {}

result SceneCamera::StartAutoFocus() {
    InStream(kFocusTime, [this] { Client()->OnFocused(true); });
    return result::kSuccess;
}

GeneratedCamera::FrameJob SceneCamera::MakeFrameJob(const StreamSettings& settings,
                                                    long long number) {
    return [scenery = scenery_, settings, number](ByteBuffer& frame) {
        scenery->MakeFrame(settings, number, frame);
    };
}

GeneratedCamera::StillJob SceneCamera::MakeStillJob(const StreamSettings& settings,
                                                    long long number) {
    return {[scenery = scenery_, settings, number](ByteBuffer& jpeg) {
                return scenery->MakeStill(settings, number, jpeg);
            },
            nullptr};
}

GeneratedCamera::PrepareJob SceneCamera::MakePrepareJob(const StreamSettings& settings) {
    return [scenery = scenery_, settings] { scenery->PrepareStill(settings); };
}

}  // namespace Osp::Media
