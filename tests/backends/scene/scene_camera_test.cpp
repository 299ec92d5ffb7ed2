#include <gtest/gtest.h>
#include <numeric>
#include <set>
#include <utility>

#include "tests/support/pictures/jpeg.h"
#include "tests/support/running_camera.h"

namespace Osp::Media {
namespace {

using namespace std::chrono_literals;
using Kivo::Testing::DecodeJpeg;

constexpr const char* kScene = "scene";

TEST(SceneCamera, DeliversThirtyFramesASecondOfItsPreviewSize) {
    RunningCamera phone(kScene, CameraSelection::kPrimary);
    phone.test.Pass(2s);
    const auto& times = phone.listener.frameTimesUs;
    ASSERT_EQ(times.size(), 61u);
    for (std::size_t i = 0; i < times.size(); ++i) {
        EXPECT_EQ(times[i], static_cast<long long>(i) * 1'000'000 / 30);
    }
    EXPECT_EQ(phone.listener.frame.size(), 800u * 480 * 3 / 2);
    phone.RestartWith({640, 480}, {640, 480});
    EXPECT_EQ(phone.NextFrame().size(), 640u * 480 * 3 / 2);
}

TEST(SceneCamera, ShowsTheSameAtTheSameMomentWhateverWentBefore) {
    for (const auto selection : {CameraSelection::kPrimary, CameraSelection::kSecondary}) {
        RunningCamera one(kScene, selection);
        one.test.Pass(3s);
        const std::string frame = one.listener.frame;
        const std::string still = one.Capture();
        RunningCamera other(kScene, selection, 2s);
        other.test.Pass(500ms);
        EXPECT_NE(other.listener.frame, frame);
        (void)other.Capture();
        EXPECT_EQ(other.camera.ZoomIn(), result::kSuccess);
        other.NextFrame();
        EXPECT_EQ(other.camera.ZoomOut(), result::kSuccess);
        other.test.Pass(3s - other.test.Clock().Now());
        EXPECT_TRUE(other.listener.frame == frame);
        EXPECT_TRUE(other.Capture() == still);
    }
}

TEST(SceneCamera, StillsHaveTheirSizeAndShowWhatThePreviewShows) {
    for (const auto selection : {CameraSelection::kPrimary, CameraSelection::kSecondary}) {
        RunningCamera phone(kScene, selection);
        for (const Graphics::Dimension& size :
             {Graphics::Dimension{1600, 960}, {1280, 960}, {800, 480}, {640, 480}}) {
            phone.RestartWith({640, 480}, size);
            phone.test.Pass(100ms);
            const Picture still = DecodeJpeg(phone.Capture());
            EXPECT_EQ((Graphics::Dimension{still.width, still.height}), size);
            if (size.width != 640) continue;
            const Picture shown = PictureOf(phone.listener.frame, size.width, size.height);
            EXPECT_LT(MeanDifference(still, shown), 3);
        }
    }
}

TEST(SceneCamera, ZoomAndWhiteBalanceChangePreviewAndStillsAlike) {
    RunningCamera phone(kScene, CameraSelection::kPrimary);
    phone.RestartWith({800, 480}, {800, 480});
    std::set<std::string> frames;
    const auto check = [&] {
        phone.test.Pass(34ms);
        const std::string still = phone.Capture();
        const Picture shown = PictureOf(phone.listener.frame, 800, 480);
        EXPECT_LT(MeanDifference(DecodeJpeg(still), shown), 4);
        EXPECT_TRUE(frames.insert(still).second) << "nothing has changed";
    };
    for (int step = 1; step <= 6; ++step) {
        ASSERT_EQ(phone.camera.ZoomIn(), result::kSuccess);
        check();
    }
    for (int i = 1; i <= 4; ++i) {
        ASSERT_EQ(phone.camera.SetWhiteBalance(CameraWhiteBalance(i)), result::kSuccess);
        check();
    }
}

/// The middle of a still, at its own scale.
Picture MiddleOf(const Picture& still, int width, int height) {
    Picture middle(width, height);
    for (int y = 0; y < height; ++y) {
        const int row = y + (still.height - height) / 2;
        std::copy_n(still.View().Row(row) + 3 * ((still.width - width) / 2), 3 * width,
                    middle.View().Row(y));
    }
    return middle;
}

Picture FirstStill(CameraSelection selection, const Graphics::Dimension& size, int zoomSteps) {
    RunningCamera phone(kScene, selection);
    phone.RestartWith({640, 480}, size);
    for (int i = 0; i < zoomSteps; ++i) EXPECT_EQ(phone.camera.ZoomIn(), result::kSuccess);
    return DecodeJpeg(phone.Capture());
}

// At 2x a picture of half the size shows the middle of the whole at the whole's scale.
TEST(SceneCamera, ZoomMagnifiesTheMiddle) {
    for (const auto selection : {CameraSelection::kPrimary, CameraSelection::kSecondary}) {
        const Picture whole = FirstStill(selection, {1280, 960}, 0);
        const Picture zoomed = FirstStill(selection, {640, 480}, 2);
        EXPECT_LT(MeanDifference(zoomed, MiddleOf(whole, 640, 480)), 0.5);
    }
}

TEST(SceneCamera, FocusesWithinTwoMilliseconds) {
    RunningCamera phone(kScene, CameraSelection::kPrimary);
    phone.test.Pass(10ms);
    ASSERT_EQ(phone.camera.StartAutoFocus(), result::kSuccess);
    EXPECT_EQ(phone.camera.Capture(), result::kInvalidState) << "one of them at a time";
    phone.test.Pass(2ms);
    EXPECT_EQ(phone.listener.TakeAnswers(), (Notes{"sharp"}));
    ASSERT_EQ(phone.camera.StartAutoFocus(), result::kSuccess);
    ASSERT_EQ(phone.camera.StopPreview(), result::kSuccess);
    ASSERT_EQ(phone.camera.StartPreview(nullptr, true), result::kSuccess);
    phone.test.Pass(1s);
    EXPECT_TRUE(phone.listener.TakeAnswers().empty()) << "the answer of an old stream";
}

TEST(SceneCamera, ACameraMayGoWhileItsPicturesAreMade) {
    for (int i = 0; i < 20; ++i) {
        RunningCamera phone(kScene, CameraSelection::kPrimary);
        if (i % 2 == 0) phone.NextFrame();
        const bool takesOne = i % 4 == 0;
        EXPECT_EQ(takesOne ? phone.camera.Capture() : result::kSuccess, result::kSuccess);
        if (i % 3 == 0) continue;  // the phone goes as well
        EXPECT_EQ(phone.camera.PowerOff(), result::kSuccess);
        phone.listener.TakeNotes();
        phone.test.Pass(100ms);
        EXPECT_TRUE(phone.listener.TakeNotes().empty());
    }
}

/// Of a frame of 640 x 480.
double MeanLuma(const std::string& frame) {
    return std::accumulate(frame.begin(), frame.begin() + 640 * 480, 0.0,
                           [](double sum, unsigned char luma) { return sum + luma; }) /
           (640 * 480);
}

// The message is turned on the front camera: its rows run over the columns of the frame.
TEST(DisconnectedCamera, ShowsADarkPictureWithAMessageAcrossItsMiddle) {
    for (const auto selection : {CameraSelection::kPrimary, CameraSelection::kSecondary}) {
        RunningCamera phone(kScene, selection);
        phone.RestartWith({640, 480}, {640, 480});
        const std::string before = phone.NextFrame();
        ASSERT_EQ(phone.service->Unplug(selection), result::kSuccess);
        phone.test.Pass(100ms);
        EXPECT_EQ(phone.listener.TakeAnswers(), (Notes{"disconnected"}));
        EXPECT_EQ(phone.camera.Capture(), result::kInvalidState);
        const std::string message = phone.listener.frame;
        EXPECT_GT(MeanLuma(before), 80);
        EXPECT_LT(MeanLuma(message), 60);
        std::set<int> columns;
        std::set<int> rows;
        for (int i = 0; i < 640 * 480; ++i) {
            if (static_cast<unsigned char>(message[static_cast<std::size_t>(i)]) < 150) continue;
            columns.insert(i % 640);
            rows.insert(i / 640);
        }
        const bool isTurned = selection == CameraSelection::kSecondary;
        const auto& along = isTurned ? rows : columns;
        const auto& across = isTurned ? columns : rows;
        EXPECT_GT(along.size(), 200u);
        EXPECT_LT(across.size(), 60u);
        EXPECT_GT(*along.begin(), 60) << "too large";
        EXPECT_LT(*along.rbegin(), (isTurned ? 480 : 640) - 60) << "too large";
        const int middle = isTurned ? 320 : 240;
        EXPECT_TRUE(*across.begin() < middle && *across.rbegin() > middle);

        ASSERT_EQ(phone.service->Plug(selection), result::kSuccess);
        phone.test.Pass(100ms);
        EXPECT_GT(MeanLuma(phone.listener.frame), 80);
        EXPECT_FALSE(phone.Capture().empty());
    }
}

}  // namespace
}  // namespace Osp::Media
