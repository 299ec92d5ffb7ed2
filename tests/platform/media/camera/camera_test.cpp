#include <gtest/gtest.h>
#include <memory>
#include <utility>

#include <osp/media/camera.h>

#include "host/cameras/camera_sources.h"
#include "tests/support/camera_fixture.h"
#include "tests/support/scripted_device.h"
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

TEST(CameraService, PlugsAndUnplugsTheCamerasThatItWasGiven) {
    const Testing::TestLoop test;
    CameraService one(std::make_unique<ScriptedDevice>("device"), nullptr);
    EXPECT_EQ(one.Unplug(CameraSelection::kSecondary), result::kObjectNotFound);
    EXPECT_EQ(one.Plug(CameraSelection::kPrimary), result::kInvalidState);
    EXPECT_EQ(one.Unplug(CameraSelection::kPrimary), result::kSuccess);
    EXPECT_EQ(one.Slot(CameraSelection::kPrimary).Current().Id(), "disconnected");
    EXPECT_EQ(one.Unplug(CameraSelection::kPrimary), result::kInvalidState);
    EXPECT_EQ(one.Count(), 1) << "an unplugged camera is a known one";
}

TEST(Camera, OffersTheSizesOfItsPlaceAndTwoFormats) {
    Testing::TestLoop test;
    const Cameras cameras("scene", "scene");
    NotingListener listener(test);
    Camera primary;
    ASSERT_EQ(primary.Construct(listener, CameraSelection::kPrimary), result::kSuccess);
    EXPECT_EQ(primary.Construct(listener, CameraSelection::kPrimary), result::kInvalidState);
    const Sizes stills = {{640, 480}, {800, 480}, {1280, 960}, {1600, 960}};
    EXPECT_EQ(Taken(primary.GetSupportedCaptureResolutionListN()), stills);
    EXPECT_EQ(Taken(primary.GetSupportedPreviewResolutionListN()).back(), (Dimension{800, 480}));
    EXPECT_EQ(primary.SetPreviewFormat(PixelFormat::kYuv420Planar), result::kInvalidState);

    ASSERT_EQ(primary.PowerOn(), result::kSuccess);
    EXPECT_TRUE(primary.IsPoweredOn());
    EXPECT_EQ(primary.SetPreviewFormat(PixelFormat::kYuv420Planar), result::kSuccess);
    EXPECT_EQ(primary.SetPreviewFormat(PixelFormat::kJpeg), result::kUnsupported);
    EXPECT_EQ(primary.SetCaptureFormat(PixelFormat::kJpeg), result::kSuccess);
    EXPECT_EQ(primary.SetCaptureFormat(PixelFormat::kYuv420Planar), result::kUnsupported);
    Base::ByteBuffer buffer;
    EXPECT_EQ(primary.StartPreview(&buffer, true), result::kUnsupported);
    EXPECT_EQ(primary.GetState(), CameraState::kInitial);
    ASSERT_EQ(primary.StartPreview(nullptr, true), result::kSuccess);
    EXPECT_EQ(primary.GetState(), CameraState::kPreviewing) << "inside StartPreview";
    EXPECT_EQ(primary.SetCaptureFormat(PixelFormat::kJpeg), result::kInvalidState);

    Camera secondary;
    ASSERT_EQ(secondary.Construct(listener, CameraSelection::kSecondary), result::kSuccess);
    EXPECT_EQ(secondary.GetPreviewResolution(), (Dimension{640, 480}));
    EXPECT_EQ(secondary.PowerOn(), result::kSuccess)
        << "the cameras have nothing to do with another";
}

TEST(Camera, RefusesEverythingWithoutADevice) {
    Testing::TestLoop test;
    const Cameras cameras("scene", "none");
    NotingListener listener(test);
    Camera camera;
    EXPECT_EQ(camera.Construct(listener, CameraSelection::kSecondary), result::kObjectNotFound);
    const result answers[] = {camera.PowerOn(),
                              camera.PowerOff(),
                              camera.SetPreviewResolution({640, 480}),
                              camera.SetPreviewFormat(PixelFormat::kYuv420Planar),
                              camera.SetCaptureResolution({640, 480}),
                              camera.SetCaptureFormat(PixelFormat::kJpeg),
                              camera.StartPreview(nullptr, true),
                              camera.StopPreview(),
                              camera.StartAutoFocus(),
                              camera.Capture(),
                              camera.ZoomIn(),
                              camera.ZoomOut(),
                              camera.SetFlash(false),
                              camera.SetWhiteBalance(CameraWhiteBalance::kAuto)};
    for (const result answer : answers) EXPECT_EQ(answer, result::kInvalidState);
    EXPECT_FALSE(camera.IsPoweredOn());
    EXPECT_EQ(camera.GetState(), CameraState::kInitial);
    EXPECT_EQ(camera.GetSupportedPreviewResolutionListN(), nullptr);
    EXPECT_EQ(camera.GetSupportedCaptureResolutionListN(), nullptr);
}

}  // namespace
}  // namespace Osp::Media
