// The page with all that the camera can make of a picture.
#include <gtest/gtest.h>

#include "develop/sheet_layout.h"
#include "tests/develop/develop_fixture.h"
#include "tests/support/pictures/plain_composition.h"

namespace Kivo::Testing {
namespace {

using Osp::Graphics::Rectangle;
using Tools::SheetLayout;

class ContactSheetTest : public DevelopTest {
  protected:
    /// The sheet of a picture, with further arguments.
    Picture Sheet(const Picture& picture, std::vector<std::string> arguments = {}) {
        const std::string in = Write("in.ppm", ToPpm(picture));
        arguments.insert(arguments.begin(), {"--sheet", in, "-o", At("sheet.ppm")});
        Develop(arguments);
        return FromPpm(Read("sheet.ppm"));
    }
};

std::vector<int> ColourAt(const Picture& picture, int x, int y) {
    const std::uint8_t* const pixel = picture.View().Row(y) + 3 * x;
    return {pixel[0], pixel[1], pixel[2]};
}

/// Whether all channels differ by at most 2, which scaling may make of a flat neighbourhood.
bool IsClose(const std::vector<int>& a, const std::vector<int>& b) {
    return std::ranges::equal(a, b, [](int x, int y) { return std::abs(x - y) <= 2; });
}

/// Two flat halves, left and right, so that most of what the developments do to colours shows.
Picture Halves(int width, int height) {
    constexpr std::uint8_t kColours[2][3] = {{200, 90, 60}, {40, 130, 180}};
    Picture picture(width, height);
    for (int i = 0; i < width * height; ++i) {
        std::ranges::copy(kColours[i % width * 2 / width], picture.bytes.begin() + 3 * i);
    }
    return picture;
}

TEST_F(ContactSheetTest, ShowsEveryCombinationInItsPlace) {
    const Plain::Levels levels;
    const Picture in = Halves(480, 288);
    for (const bool hdr : {false, true}) {
        const Picture sheet = Sheet(in, std::vector<std::string>(hdr ? 1 : 0, "--hdr"));
        const SheetLayout layout({in.width, in.height});
        ASSERT_EQ(sheet.width, layout.Sheet().width);
        ASSERT_EQ(sheet.height, layout.Sheet().height);
        for (int type = 0; type < 6; ++type) {
            const std::vector<Picture> frames(type == 2 || type == 3 ? 4 : type == 4 ? 2 : 1, in);
            for (int effect = 0; effect < 10; ++effect) {
                const Picture expected = ComposePlain({type, effect, false, hdr}, frames, levels);
                const Rectangle frame = layout.Frame(type, effect);
                ASSERT_EQ(frame.height, 144);  // half the picture's
                for (const auto& [x, y] : {std::pair{40, 40}, {200, 40}, {40, 110}, {190, 100}}) {
                    EXPECT_TRUE(IsClose(ColourAt(sheet, frame.x + x, frame.y + y),
                                        ColourAt(expected, 2 * x, 2 * y)))
                        << "type " << type << " effect " << effect << " at " << x << ", " << y;
                }
            }
        }
    }
}

TEST_F(ContactSheetTest, HasACaptionUnderEveryFrame) {
    const Picture sheet = Sheet(Picture(100, 60, 0));
    const SheetLayout layout({100, 60});
    for (int i = 0; i < 6 * 10; ++i) {
        const Rectangle box = layout.Caption(i / 10, i % 10);
        int light = 0;
        for (int pixel = 0; pixel < box.width * box.height; ++pixel) {
            const int x = box.x + pixel % box.width;
            light += ColourAt(sheet, x, box.y + pixel / box.width)[0] > 200 ? 1 : 0;
        }
        EXPECT_GT(light, 100) << "type " << i / 10 << " effect " << i % 10;
        EXPECT_LT(light, box.width * box.height / 2);
    }
}

TEST_F(ContactSheetTest, FitsPicturesOfEveryShape) {
    for (const auto& [width, height] : {std::pair{4000, 3}, {480, 800}}) {
        EXPECT_EQ(Sheet(Picture(width, height, 9)).width,
                  SheetLayout({width, height}).Sheet().width);
    }
    EXPECT_EQ(Sheet(Picture(160, 120, 9), {"--secondary"}).height,
              SheetLayout({120, 160}).Sheet().height);
}

}  // namespace
}  // namespace Kivo::Testing
