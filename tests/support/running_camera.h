// A camera of the service, previewing, for tests of what it delivers.
#pragma once

#include <chrono>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <libyuv.h>
#include <memory>
#include <numeric>
#include <string>
#include <utility>

#include <osp/media/camera.h>

#include "host/cameras/camera_sources.h"
#include "tests/support/camera_fixture.h"
#include "tests/support/pictures/pictures.h"
#include "tests/support/test_loop.h"

namespace Osp::Media {

struct RunningCamera {
    RunningCamera(const std::string& source, CameraSelection selection,
                  Base::Duration startAfter = {})
        : service(std::move(*Host::MakeCameras(source, source, false, modules))),
          installed(*service) {
        test.Pass(startAfter);
        EXPECT_EQ(camera.Construct(listener, selection), result::kSuccess);
        EXPECT_EQ(camera.PowerOn(), result::kSuccess);
        EXPECT_EQ(camera.StartPreview(nullptr, true), result::kSuccess);
    }

    /// The next frame, as it was delivered.
    std::string NextFrame() {
        test.Pass(std::chrono::milliseconds(34));
        return listener.frame;
    }
    /// The still of a capture that must succeed.
    std::string Capture() {
        EXPECT_EQ(camera.Capture(), result::kSuccess);
        listener.TakeNotes();
        test.Settle();
        EXPECT_EQ(listener.TakeAnswers(), (Notes{"captured"}));
        return listener.still;
    }
    void RestartWith(const Graphics::Dimension& previewSize,
                     const Graphics::Dimension& captureSize) {
        EXPECT_EQ(camera.StopPreview(), result::kSuccess);
        EXPECT_EQ(camera.SetPreviewResolution(previewSize), result::kSuccess);
        EXPECT_EQ(camera.SetCaptureResolution(captureSize), result::kSuccess);
        EXPECT_EQ(camera.StartPreview(nullptr, true), result::kSuccess);
    }

    Testing::TestLoop test;
    NotingListener listener{test};
    Host::CameraModules modules;
    std::unique_ptr<CameraService> service;
    CameraService::Installed installed;
    Camera camera;
};

/// The picture in an I420 frame whose first chroma plane is Cb.
inline Picture PictureOf(const std::string& frame, int width, int height) {
    Picture picture(width, height);
    const auto* const luma = reinterpret_cast<const std::uint8_t*>(frame.data());
    const auto* const cb = luma + width * height;
    const auto* const cr = cb + width * height / 4;
    EXPECT_EQ(libyuv::I420ToRAW(luma, width, cb, width / 2, cr, width / 2, picture.bytes.data(),
                                3 * width, width, height),
              0);
    return picture;
}

/// How far apart the bytes of two pictures of one size are, on the average.
inline double MeanDifference(const Picture& a, const Picture& b) {
    EXPECT_EQ(a.bytes.size(), b.bytes.size());
    if (a.bytes.size() != b.bytes.size()) return 255;
    return std::transform_reduce(a.bytes.begin(), a.bytes.end(), b.bytes.begin(), 0.0,
                                 std::plus<>(), [](int x, int y) { return std::abs(x - y); }) /
           static_cast<double>(a.bytes.size());
}

}  // namespace Osp::Media
