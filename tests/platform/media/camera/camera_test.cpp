#include <gtest/gtest.h>
#include <memory>
#include <utility>

#include <osp/media/camera.h>

#include "host/cameras/camera_sources.h"
#include "tests/support/camera_fixture.h"
#include "tests/support/test_loop.h"

namespace Osp::Media {
namespace {

using Graphics::Dimension;
using Sizes = std::vector<Dimension>;

Sizes Taken(Sizes* list) {
    const std::unique_ptr<Sizes> owned(list);
    return owned ? *owned : Sizes{};
}

/// A phone with these cameras.
struct Cameras {
    Cameras(const char* primary, const char* secondary)
        : service(std::move(*Host::MakeCameras(primary, secondary, false, modules))),
          installed(*service) {}

    Host::CameraModules modules;
    std::unique_ptr<CameraService> service;
    CameraService::Installed installed;
};

TEST(Camera, OffersTheSizesOfItsPlaceAndTwoFormats) {
    Testing::TestLoop test;
    const Cameras cameras("scene", "scene");
    NotingListener listener(test);
    Camera primary;
    EXPECT_EQ(primary.Capture(), result::kInvalidState);
    EXPECT_EQ(primary.GetSupportedCaptureResolutionListN(), nullptr);
    ASSERT_EQ(primary.Construct(listener, CameraSelection::kPrimary), result::kSuccess);
    const Sizes stills = {{640, 480}, {800, 480}, {1280, 960}, {1600, 960}};
    EXPECT_EQ(Taken(primary.GetSupportedCaptureResolutionListN()), stills);
    EXPECT_EQ(Taken(primary.GetSupportedPreviewResolutionListN()).back(), (Dimension{800, 480}));
    EXPECT_EQ(primary.SetPreviewFormat(PixelFormat::kYuv420Planar), result::kInvalidState);

    ASSERT_EQ(primary.PowerOn(), result::kSuccess);
    EXPECT_EQ(primary.SetPreviewFormat(PixelFormat::kYuv420Planar), result::kSuccess);
    EXPECT_EQ(primary.SetPreviewFormat(PixelFormat::kJpeg), result::kUnsupported);
    EXPECT_EQ(primary.SetCaptureFormat(PixelFormat::kJpeg), result::kSuccess);
    EXPECT_EQ(primary.SetCaptureFormat(PixelFormat::kYuv420Planar), result::kUnsupported);
    EXPECT_EQ(primary.GetState(), CameraState::kInitial);
    ASSERT_EQ(primary.StartPreview(nullptr, true), result::kSuccess);
    EXPECT_EQ(primary.GetState(), CameraState::kPreviewing) << "inside StartPreview";

    Camera secondary;
    ASSERT_EQ(secondary.Construct(listener, CameraSelection::kSecondary), result::kSuccess);
    EXPECT_EQ(secondary.GetPreviewResolution(), (Dimension{640, 480}));
    EXPECT_EQ(secondary.PowerOn(), result::kSuccess)
        << "the cameras have nothing to do with another";
}

}  // namespace
}  // namespace Osp::Media
