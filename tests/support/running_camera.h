// A camera of the service, previewing, for tests of what it delivers.
#pragma once

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>

#include <osp/media/camera.h>

#include "host/camera_sources.h"
#include "tests/support/camera_fixture.h"
#include "tests/support/pictures.h"
#include "tests/support/test_loop.h"

namespace Osp::Media {

struct RunningCamera {
    RunningCamera(const std::string& source, CameraSelection selection,
                  Base::Duration startAfter = {})
        : service(std::move(*Host::MakeCameras(source, source))), installed(*service) {
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
    std::unique_ptr<CameraService> service;
    CameraService::Installed installed;
    Camera camera;
};

/// The picture in an I420 frame whose first chroma plane is Cb, by the formulas of the standard.
inline Picture PictureOf(const std::string& frame, int width, int height) {
    Picture picture(width, height);
    const auto at = [&](int index) {
        return static_cast<double>(
            static_cast<unsigned char>(frame[static_cast<std::size_t>(index)]));
    };
    const auto put = [](std::uint8_t& target, double value) {
        target = static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value + 0.5);
    };
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int chroma = width * height + y / 2 * (width / 2) + x / 2;
            const double luma = 1.164 * (at(y * width + x) - 16);
            const double cb = at(chroma) - 128;
            const double cr = at(chroma + width * height / 4) - 128;
            std::uint8_t* const pixel = picture.View().Row(y) + 3 * x;
            put(pixel[0], luma + 1.596 * cr);
            put(pixel[1], luma - 0.392 * cb - 0.813 * cr);
            put(pixel[2], luma + 2.017 * cb);
        }
    }
    return picture;
}

/// How far apart the bytes of two pictures of one size are, on the average.
inline double MeanDifference(const Picture& a, const Picture& b) {
    EXPECT_EQ(a.bytes.size(), b.bytes.size());
    if (a.bytes.size() != b.bytes.size()) return 255;
    double sum = 0;
    for (std::size_t i = 0; i < a.bytes.size(); ++i) sum += std::abs(a.bytes[i] - b.bytes[i]);
    return sum / static_cast<double>(a.bytes.size());
}

}  // namespace Osp::Media
