#include "backends/photos/photos_camera.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <utility>
#include <vector>

#include "osp/media/picture/exif.h"
#include "tests/support/faults.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/pictures/plain_composition.h"
#include "tests/support/pictures/png.h"
#include "tests/support/running_camera.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Media {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Kivo::Testing::DecodeJpeg;
using Kivo::Testing::EncodeJpeg;
using Testing::WriteText;

using Colour = std::array<std::uint8_t, 3>;
constexpr Colour kRed{200, 30, 30};
constexpr Colour kGreen{30, 180, 60};
constexpr Colour kBlue{40, 60, 210};
constexpr Colour kYellow{230, 210, 40};

void Fill(Picture& picture, int left, int top, int width, int height, const Colour& colour) {
    for (int y = top; y < top + height; ++y) {
        for (int x = left; x < left + width; ++x) {
            std::ranges::copy(colour, picture.View().Row(y) + 3 * x);
        }
    }
}

Picture Plain(int width, int height, const Colour& colour) {
    Picture picture(width, height);
    Fill(picture, 0, 0, width, height, colour);
    return picture;
}

/// Quarters: red, green above blue, yellow.
Picture Quarters(int width, int height) {
    Picture picture = Plain(width, height, kYellow);
    Fill(picture, 0, 0, width / 2, height / 2, kRed);
    Fill(picture, width / 2, 0, width - width / 2, height / 2, kGreen);
    Fill(picture, 0, height / 2, width / 2, height - height / 2, kBlue);
    return picture;
}

void ExpectColour(const Picture& picture, double x, double y, const Colour& colour) {
    const std::uint8_t* const pixel = picture.View().Row(static_cast<int>(y * picture.height)) +
                                      3 * static_cast<int>(x * picture.width);
    for (int c = 0; c < 3; ++c) {
        EXPECT_NEAR(pixel[c], colour[static_cast<std::size_t>(c)], 6) << "at " << x << ", " << y;
    }
}

/// Looks at the picture as far from its edges as `near` says.
void ExpectQuarters(const Picture& picture, double near) {
    ExpectColour(picture, near, near, kRed);
    ExpectColour(picture, 1 - near, near, kGreen);
    ExpectColour(picture, near, 1 - near, kBlue);
    ExpectColour(picture, 1 - near, 1 - near, kYellow);
}

class PhotosCameraTest : public testing::Test {
  protected:
    void Put(const std::string& name, const std::string& bytes) {
        WriteText(folder_ / name, bytes);
    }
    void PutPng(const std::string& name, const Picture& picture) {
        Put(name,
            Kivo::Testing::EncodePng(picture.bytes, picture.width, picture.height, PNG_FORMAT_RGB));
    }
    /// JPEGs of the size that is taken, under the names 0, 1 and so on.
    std::vector<std::string> PutPhotographs(unsigned count) {
        std::vector<std::string> files;
        for (unsigned i = 0; i < count; ++i) {
            files.push_back(EncodeJpeg(RandomPicture(1280, 960, Look::kGradient, i)));
            Put(std::to_string(i), files.back());
        }
        return files;
    }
    std::unique_ptr<RunningCamera> Phone(CameraSelection selection = CameraSelection::kPrimary) {
        return std::make_unique<RunningCamera>("photos:" + folder_.Path(), selection);
    }

    Testing::TemporaryFolder folder_;
};

TEST_F(PhotosCameraTest, DeliversTheBytesOfTheFilesInTheOrderOfTheirNamesAndBeginsAnew) {
    const std::vector<std::string> files = PutPhotographs(3);
    fs::rename(folder_ / "2", folder_ / "2 with an ending.txt");
    fs::rename(folder_ / "1", folder_ / "1.jpg");
    fs::create_directory(folder_ / "1 a folder.jpg");
    const auto phone = Phone();
    for (const std::size_t expected : {0, 1, 2, 0, 1}) {
        EXPECT_TRUE(phone->Capture() == files[expected]) << expected;
        (void)phone->camera.PowerOff();
        ASSERT_EQ(phone->camera.PowerOn(), result::kSuccess);
        ASSERT_EQ(phone->camera.StartPreview(nullptr, true), result::kSuccess);
    }
}

TEST_F(PhotosCameraTest, ACaptureThatWasStoppedTakesNoPicture) {
    const std::vector<std::string> files = PutPhotographs(2);
    const auto phone = Phone();
    ASSERT_EQ(phone->camera.Capture(), result::kSuccess);
    phone->RestartWith({800, 480}, {1280, 960});
    EXPECT_TRUE(phone->Capture() == files[0]);
    EXPECT_TRUE(phone->Capture() == files[1]);
}

TEST_F(PhotosCameraTest, ScalesOtherPicturesToFillAndKeepsTheirMiddle) {
    // The outer thirds are cut off; the picture is enlarged.
    Picture wide = Plain(300, 75, kYellow);
    Fill(wide, 100, 0, 50, 75, kRed);
    Fill(wide, 150, 0, 50, 75, kBlue);
    PutPng("0.png", wide);
    Put("1.jpg", EncodeJpeg(Quarters(1600, 1600)));
    PutPng("2.png", Quarters(1280, 960));
    const auto phone = Phone();
    const Picture first = DecodeJpeg(phone->Capture());
    ASSERT_EQ(std::pair(first.width, first.height), std::pair(1280, 960));
    for (const double x : {0.02, 0.45}) ExpectColour(first, x, 0.5, kRed);
    for (const double x : {0.55, 0.98}) ExpectColour(first, x, 0.5, kBlue);
    for (int i = 1; i <= 2; ++i) {
        const Picture next = DecodeJpeg(phone->Capture());
        ASSERT_EQ(std::pair(next.width, next.height), std::pair(1280, 960));
        ExpectQuarters(next, 0.25);
    }
}

TEST_F(PhotosCameraTest, PreviewsTheNextPicture) {
    Put("0.jpg", EncodeJpeg(Plain(1280, 960, kRed)));
    PutPng("1.png", Plain(20, 30, kGreen));
    const auto phone = Phone();
    for (const Colour& next : {kRed, kGreen, kRed}) {
        ExpectColour(PictureOf(phone->NextFrame(), 800, 480), 0.5, 0.5, next);
        phone->Capture();
    }
}

TEST_F(PhotosCameraTest, ZoomAndWhiteBalanceMakeAnotherPictureOfTheSameFile) {
    Picture picture = Plain(1280, 960, kRed);
    Fill(picture, 480, 360, 320, 240, kGreen);
    const std::string file = EncodeJpeg(picture);
    Put("0.jpg", file);
    const auto phone = Phone();
    for (int i = 0; i < 6; ++i) ASSERT_EQ(phone->camera.ZoomIn(), result::kSuccess);
    const Picture zoomed = DecodeJpeg(phone->Capture());
    ASSERT_EQ(zoomed.width, 1280);
    for (const double near : {0.02, 0.98}) ExpectColour(zoomed, near, near, kGreen);
    for (int i = 0; i < 6; ++i) ASSERT_EQ(phone->camera.ZoomOut(), result::kSuccess);
    ASSERT_EQ(phone->camera.SetWhiteBalance(CameraWhiteBalance::kTungsten), result::kSuccess);
    const Picture cold = DecodeJpeg(phone->Capture());
    const std::uint8_t* const pixel = cold.View().Row(200) + 3 * 200;
    EXPECT_LT(pixel[0], kRed[0] - 10);
    EXPECT_GT(pixel[2], kRed[2] + 4);
    ASSERT_EQ(phone->camera.SetWhiteBalance(CameraWhiteBalance::kAuto), result::kSuccess);
    EXPECT_TRUE(phone->Capture() == file);
}

// The application turns what the front camera sees clockwise: there it must be upright.
TEST_F(PhotosCameraTest, TheFrontCameraSeesTheMiddleOfThePictureAQuarterTurned) {
    Picture wide = Plain(1280, 480, kRed);
    const Picture middle = Quarters(360, 480);
    for (int y = 0; y < 480; ++y) {
        std::copy_n(middle.View().Row(y), 3 * 360, wide.View().Row(y) + 3 * 460);
    }
    PutPng("0.png", wide);
    const auto phone = Phone(CameraSelection::kSecondary);
    const std::string frame = phone->NextFrame();
    ASSERT_EQ(frame.size(), 640u * 480 * 3 / 2);
    const Picture upright = PlainStored(PictureOf(frame, 640, 480), true);
    for (const double near : {0.02, 0.45}) ExpectQuarters(upright, near);
    const Picture still = DecodeJpeg(phone->Capture());
    ASSERT_EQ(still.width, 1280);
    ExpectColour(still, 0.02, 0.98, kRed);
    ExpectColour(still, 0.02, 0.02, kGreen);
}

TEST_F(PhotosCameraTest, PassesOverWhatCannotBeReadAndNamesItOnce) {
    const std::string good = EncodeJpeg(Plain(1280, 960, kGreen));
    const std::string other = EncodeJpeg(Plain(1280, 960, kBlue));
    Put("0 short.jpg", good.substr(0, good.size() / 2));
    Put("1 good.jpg", good);
    Put("2 header only.jpg", good.substr(0, 3));
    Put("3 other.jpg", other);
    Put("4 gone.jpg", good);
    Put("5 no picture.PNG", "hello");
    Put("6 notes.txt", "hello");
    testing::internal::CaptureStderr();
    {
        const auto phone = Phone();
        fs::remove(folder_ / "4 gone.jpg");
        ExpectColour(PictureOf(phone->NextFrame(), 800, 480), 0.5, 0.5, kGreen);
        for (int i = 0; i < 4; ++i) EXPECT_TRUE(phone->Capture() == (i % 2 == 0 ? good : other));
    }
    const std::string errors = testing::internal::GetCapturedStderr();
    for (const char* name :
         {"0 short.jpg", "2 header only.jpg", "4 gone.jpg", "5 no picture.PNG"}) {
        EXPECT_NE(errors.find(name), std::string::npos) << errors;
    }
    EXPECT_EQ(std::ranges::count(errors, '\n'), 4) << errors;
}

TEST_F(PhotosCameraTest, TurnsPicturesUpright) {
    const Picture upright = Quarters(1280, 960);
    const Picture quarter = PlainStored(upright, true);
    const std::pair<int, Picture> stored[] = {
        {1, upright}, {3, PlainStored(quarter, true)}, {8, quarter}};
    for (const auto& [orientation, picture] : stored) {
        SCOPED_TRACE(orientation);
        ExifInfo info;
        info.orientation = orientation;
        const auto segment = BuildExifSegment(info);
        const std::string file =
            EncodeJpeg(picture).insert(2, std::string(segment.begin(), segment.end()));
        Put("0.jpg", file);
        const auto phone = Phone();
        ExpectQuarters(PictureOf(phone->NextFrame(), 800, 480), 0.25);
        const std::string still = phone->Capture();
        EXPECT_EQ(still == file, orientation == 1);
        ExpectQuarters(DecodeJpeg(still), 0.25);
    }
}

TEST_F(PhotosCameraTest, AFolderWithoutAReadablePictureIsRefused) {
    const std::string good = EncodeJpeg(Plain(1280, 960, kGreen));
    Put("0.jpg", good.substr(0, good.size() / 2));
    Put("1.jpg", good.substr(0, 700));
    testing::internal::CaptureStderr();
    std::string error;
    EXPECT_EQ(PhotosCamera::Make(folder_.Path(), CameraSelection::kPrimary, error), nullptr);
    EXPECT_EQ(error, "none of the pictures in the folder \"" + folder_.Path() + "\" can be read");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("1.jpg"), std::string::npos);
}

TEST_F(PhotosCameraTest, AnotherPictureInTheSamePlaceIsNotDeliveredAsItIs) {
    Put("0.jpg", EncodeJpeg(Plain(1280, 960, kGreen)));
    const auto phone = Phone();
    phone->NextFrame();
    Put("0.jpg", EncodeJpeg(Plain(80, 48, kRed)));
    EXPECT_EQ(DecodeJpeg(phone->Capture()).width, 1280);
}

TEST_F(PhotosCameraTest, AFolderThatVanishesFailsCapturesUntilItIsBack) {
    const std::string good = EncodeJpeg(Plain(1280, 960, kGreen));
    Put("0.jpg", good);
    Put("1.jpg", good);
    const auto phone = Phone();
    phone->NextFrame();
    fs::remove_all(folder_.Path());
    ExpectColour(DecodeJpeg(phone->Capture()), 0.5, 0.5, kGreen);  // the one that was on show
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(phone->camera.Capture(), result::kSuccess);
        phone->NextFrame();
        EXPECT_EQ(phone->listener.TakeAnswers(), (Notes{"captured: format"}));
        ExpectColour(PictureOf(phone->NextFrame(), 800, 480), 0.5, 0.5, Colour{});
    }
    fs::create_directory(folder_.Path());
    Put("1.jpg", good);
    EXPECT_TRUE(phone->Capture() == good);
}

TEST_F(PhotosCameraTest, AFolderThatMayNotBeReadIsRefused) {
    Put("0.jpg", EncodeJpeg(Plain(64, 48, kGreen)));
    fs::permissions(folder_.Path(), fs::perms::none);
    Testing::InOwnProcess([&] {
        Testing::ObeyFileModes();
        const Testing::TestLoop test;
        std::string error;
        EXPECT_EQ(PhotosCamera::Make(folder_.Path(), CameraSelection::kPrimary, error), nullptr);
        EXPECT_NE(error.find("Permission denied"), std::string::npos) << error;
    });
    fs::permissions(folder_.Path(), fs::perms::owner_all);
}

}  // namespace
}  // namespace Osp::Media
