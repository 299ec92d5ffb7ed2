// Every camera type on both cameras: when its frames are taken, what can be pressed meanwhile, and
// what photograph they make.
#include <algorithm>
#include <gtest/gtest.h>

#include "app/model/action_ids.h"
#include "osp/ui/screen.h"
#include "tests/effects/plain/plain_conversions.h"
#include "tests/support/camera_screen.h"
#include "tests/support/phone.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/pictures/plain_composition.h"
#include "tests/support/pictures/subjects.h"
#include "tests/support/running_camera.h"

namespace Kivo {
namespace {

using namespace Testing;
using Osp::Media::CameraSelection;
using Osp::Media::RunningCamera;

enum Type { kKivo, kDslr, kAction, kQuad, kMix, kTilt };
constexpr const char* kTypeNames[] = {"KIVO", "DSLR", "ACTION", "QUAD", "MIX", "TILT"};
constexpr int kFrames[] = {1, 1, 4, 4, 2, 1};

constexpr int kOtherControls[] = {kActionCameraType, kActionCameraSelection, kActionAlbum,
                                  kActionFlash,      kActionWhiteBalance,    kActionHdr,
                                  kActionSettings};

std::map<std::string, Osp::App::RegistryValue> WithType(int type) {
    return {{"CAM_TYPE", std::to_string(type)}};
}

void UseFrontCamera(Phone& phone) {
    phone.Do({"wait 100", Tap(kSwapButton), "wait 500", "await preview", "wait 100"});
}

/// Takes one photograph, with every press that its type needs.
void TakePhotograph(Phone& phone, int type) {
    phone.Do("key camera");
    if (type == kMix) phone.Do({"wait 1500", "key camera"});
    phone.Wait(6000);
}

/// What `frames` become, through file and back.
Picture Expected(const PlainPhotograph& photograph, const std::vector<Picture>& frames) {
    static const Plain::Levels levels;
    const Picture composed = ComposePlain(photograph, frames, levels);
    return DecodeJpeg(EncodeJpeg(PlainStored(composed, photograph.secondary)));
}

/// Of the preview, as the program converts it.
Picture NextFrame(RunningCamera& camera, int width, int height) {
    const std::string frame = camera.NextFrame();
    Picture picture(width, height);
    EXPECT_EQ(frame.size(), picture.bytes.size() / 2);
    Plain::ConvertPreview(reinterpret_cast<const std::uint8_t*>(frame.data()), picture.View());
    return picture;
}

class EveryType : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Types, EveryType, testing::Range(0, 6),
                         [](const auto& info) { return kTypeNames[info.param]; });

TEST_P(EveryType, MakesItsPhotographOfTheBackCamerasFrames) {
    const int type = GetParam();
    const int count = kFrames[type];
    const Subjects subjects(count);
    Phone phone({.primary = subjects.Source(), .registry = WithType(type)});
    phone.Do({"await preview", "wait 100", Tap(kHdrButton), "wait 1500"});  // HDR
    TakePhotograph(phone, type);
    const auto photos = phone.Photos();
    ASSERT_EQ(photos.size(), 2u);
    const std::string name = std::string(kTypeNames[type]) + " (Normal),1X";
    const auto list = phone.PhotoList();
    EXPECT_EQ(list[0]["description"], name);
    EXPECT_EQ(list[0]["width"], 1280);
    EXPECT_EQ(list[0]["height"], 960);
    EXPECT_EQ(list[1]["description"], name + ",HDR");
    ExpectSame(ReadJpeg(photos[0]), Expected({.type = type}, subjects.frames), "photograph");
    ExpectSame(ReadJpeg(photos[1]), Expected({.type = type, .hdr = true}, subjects.frames),
               "HDR version");
}

TEST_P(EveryType, MakesItsPhotographOfTheFrontCamerasPreview) {
    const int type = GetParam();
    const Subjects subjects(1, 1280, 960);
    const Picture frame = [&subjects] {
        RunningCamera camera(subjects.Source(), CameraSelection::kSecondary);
        camera.RestartWith({640, 480}, {640, 480});
        return NextFrame(camera, 640, 480);
    }();
    Phone phone({.primary = "scene", .secondary = subjects.Source(), .registry = WithType(type)});
    phone.Do("await preview");
    UseFrontCamera(phone);
    TakePhotograph(phone, type);
    const auto photos = phone.Photos();
    ASSERT_EQ(photos.size(), 1u);
    const Picture photograph = ReadJpeg(photos[0]);
    EXPECT_EQ(photograph.width, 480) << "portrait";
    const std::vector<Picture> frames(static_cast<std::size_t>(kFrames[type]), frame);
    ExpectSame(photograph, Expected({.type = type, .secondary = true}, frames), "photograph");
}

TEST_P(EveryType, GivesTheControlsBackAfterwardsOnBothCameras) {
    const int type = GetParam();
    Phone phone({.registry = WithType(type)});
    phone.Do("await preview");
    for (const bool front : {false, true}) {
        SCOPED_TRACE(front ? "front camera" : "back camera");
        if (front) UseFrontCamera(phone);
        phone.Do({"wait 100", "key camera"});
        EXPECT_FALSE(phone.IsEnabled(kActionCapture));
        for (const int id : kOtherControls) EXPECT_FALSE(phone.IsEnabled(id)) << id;
        if (type == kMix) {
            phone.Wait(1500);
            EXPECT_TRUE(phone.IsEnabled(kActionCapture)) << "for the second press";
            for (const int id : kOtherControls) EXPECT_FALSE(phone.IsEnabled(id)) << id;
            phone.Do("key camera");
        }
        phone.Wait(6000);
        EXPECT_TRUE(phone.IsEnabled(kActionCapture));
        EXPECT_TRUE(phone.IsEnabled(kActionCameraSelection));
    }
    EXPECT_EQ(phone.Photos().size(), 2u);
    const std::string sound = type == kKivo   ? "/Res/kivo.mp3"
                              : type == kDslr ? "/Res/dslr.mp3"
                                              : "/Res/others.mp3";
    const auto sounds = phone.Sounds();
    EXPECT_EQ(std::ranges::count(sounds, sound), 2 * kFrames[type]);
}

TEST(SeriesOfFrames, IsTakenAtItsPaceAndFocusedOnce) {
    for (const auto& [type, pauseMs] : {std::pair{kAction, 100}, {kQuad, 600}}) {
        Phone phone({.registry = WithType(type)});
        phone.Do("await preview");
        TakePhotograph(phone, type);
        const auto begun = phone.MarksMs("capture-begun");
        const auto delivered = phone.MarksMs("capture-delivered");
        ASSERT_EQ(begun.size(), 4u);
        for (std::size_t i = 1; i < 4; ++i) EXPECT_EQ(begun[i] - delivered[i - 1], pauseMs);
        EXPECT_EQ(phone.MarksMs("focus-done").size(), 1u);
    }
}

TEST(FrontPhotograph, IsTheSixthFrameAfterThePressAndTheNextFollowsASecondLater) {
    for (const int type : {kKivo, kQuad}) {
        SCOPED_TRACE(kTypeNames[type]);
        Phone phone({.registry = WithType(type)});
        phone.Do("await preview");
        UseFrontCamera(phone);
        phone.Wait(17);  // between two frames
        const long long press = phone.NowMs();
        phone.Do({"key camera", "wait 6000"});
        const auto encoded = phone.MarksMs("encode-begun");
        ASSERT_EQ(encoded.size(), 1u);
        const int waits = kFrames[type] - 1;
        const double frameMs = 1000.0 / 30;
        const double least = waits * 1000 + (waits + 1) * 5 * frameMs;
        const double most = waits * (1000 + frameMs) + (waits + 1) * 6 * frameMs;
        EXPECT_GE(static_cast<double>(encoded[0] - press), least - 1);
        EXPECT_LE(static_cast<double>(encoded[0] - press), most + 1);
    }
}

TEST(MixPhotograph, WaitsForItsSecondFrameThroughTheBackground) {
    const Subjects subjects(2);
    Phone phone({.primary = subjects.Source(), .registry = WithType(kMix)});
    phone.Do({"await preview", "key camera", "wait 1500", "background", "wait 5000", "foreground",
              "await preview", "wait 500"});
    EXPECT_TRUE(phone.IsEnabled(kActionCapture));
    EXPECT_FALSE(phone.IsEnabled(kActionCameraSelection));
    phone.Do({"key camera", "await photos 1"});
    ExpectSame(ReadJpeg(phone.Photos()[0]), Expected({.type = kMix}, subjects.frames), "MIX");
}

TEST(SeriesOfFrames, IsAbandonedByTheBackground) {
    for (const int type : {kAction, kQuad}) {
        const Subjects subjects(8);
        Phone phone({.primary = subjects.Source(), .registry = WithType(type)});
        phone.Do({"await preview", "key camera"});
        while (phone.MarksMs("capture-delivered").size() < 2) phone.Wait(20);
        phone.Do({"background", "wait 5000", "foreground", "await preview", "wait 100"});
        EXPECT_TRUE(phone.Photos().empty());
        EXPECT_TRUE(phone.IsEnabled(kActionCapture));
        EXPECT_TRUE(phone.IsEnabled(kActionCameraSelection));
        TakePhotograph(phone, type);
        ASSERT_EQ(phone.Photos().size(), 1u);
        const std::vector<Picture> frames(subjects.frames.begin() + 2, subjects.frames.begin() + 6);
        ExpectSame(ReadJpeg(phone.Photos()[0]), Expected({.type = type}, frames),
                   "the next series begins anew");
    }
}

TEST(MixPreview, BlendsTheFirstFrameWithTheLivePicture) {
    const Subjects subjects(2, 800, 480);
    std::string blend(800 * 480 * 3 / 2, '\0');
    {
        RunningCamera camera(subjects.Source(), CameraSelection::kPrimary);
        camera.RestartWith({800, 480}, {800, 480});
        (void)camera.Capture();
        const Picture live = NextFrame(camera, 800, 480);
        Plain::EncodePreview(live.View(), subjects.frames[0].View(),
                             reinterpret_cast<std::uint8_t*>(blend.data()));
    }
    Phone phone({.primary = subjects.Source(),
                 .registry = {{"CAM_TYPE", "4"}, {"CAPTURE_WIDTH", 800}, {"CAPTURE_HEIGHT", 480}}});
    phone.Do({"await preview", "key camera", "wait 1500"});
    Picture shown(800, 480);
    phone.On([&shown] {
        const Osp::Graphics::Surface& screen = Osp::Ui::Screen::Current().Compose();
        for (int i = 0; i < 800 * 480; ++i) {
            const auto* const bgrx = screen.Data() + i / 800 * screen.StrideBytes() + i % 800 * 4;
            std::reverse_copy(bgrx, bgrx + 3, shown.bytes.begin() + 3 * i);
        }
    });
    const Picture expected = Osp::Media::PictureOf(blend, 800, 480);
    for (int y = 110; y < 170; ++y) {
        for (int i = 3 * 150; i < 3 * 500; ++i) {  // where no control lies
            ASSERT_NEAR(shown.View().Row(y)[i], expected.View().Row(y)[i], 2) << i << ", " << y;
        }
    }
}

}  // namespace
}  // namespace Kivo
