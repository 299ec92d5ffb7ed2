// File names and descriptions of photographs.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/model/photo_description.h"
#include "app/model/photo_number.h"

namespace {

using namespace Kivo;

TEST(PhotoNumber, FollowsTheHighestInUse) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(HighestPhotoNumber(Names{}), -1);
    EXPECT_EQ(HighestPhotoNumber(Names{"KIVO0009.jpg", "KIVO0041.jpg", "KIVO0010.jpg"}), 41);
    EXPECT_EQ(HighestPhotoNumber(Names{"KIVOabcd.jpg", "kivo0007.jpg", "IMG_0008.jpg"}), -1);
    EXPECT_EQ(HighestPhotoNumber(Names{"KIVO12345.jpg"}), 1234);
    EXPECT_EQ(HighestPhotoNumber(Names{"KIVO0003", "KIVO0005.png.part"}), 5);
}

TEST(PhotoNumber, NeedsFourDigits) {
    for (const char* name : {"KIVO", "KIVO12", "KIVO12.jpg", "KIVO 123.jpg", "KIVO+123.jpg",
                             "KIVO12a4.jpg", "KIVO0x12.jpg", "", ".KIVO0001.jpg"}) {
        EXPECT_FALSE(PhotoNumberOf(name)) << name;
    }
    EXPECT_EQ(PhotoNumberOf("KIVO0000.jpg"), 0);
    EXPECT_EQ(HighestPhotoNumber(std::vector<std::string>{"KIVO-123.jpg"}), -1);
}

TEST(PhotoDescription, NamesTheZoomAndTakesAnEffectThatIsNoneForNormal) {
    const auto describe = [](PhotoEffect effect, ZoomLevel zoom) {
        return ComposePhotoDescription(CameraType::kTiltShift, effect, zoom, false);
    };
    EXPECT_EQ(describe(PhotoEffect::kSepia, ZoomLevel::k1_5X), "TILT (Sepia),1.5X");
    EXPECT_EQ(describe(PhotoEffect::kBlackWhite, ZoomLevel::k4X), "TILT (B&W),4X");
    EXPECT_EQ(describe(PhotoEffect{200}, ZoomLevel::k3_5X), "TILT (Normal),3.5X");
}

}  // namespace
