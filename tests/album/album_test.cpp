// What the album makes of names, descriptions and sizes.
#include <gtest/gtest.h>

#include "album/album_layout.h"
#include "album/album_list.h"
#include "album/photo_information.h"

namespace Kivo {
namespace {

using Osp::Graphics::Dimension;
using Names = std::vector<std::string>;

TEST(AlbumList, SpellsTheNamesAnewInTheOrderOfTheirNumbers) {
    const Names folder{"KIVO0012.jpg",  "KIVO0002.jpg", "KIVO12.jpg",
                       "KIVOabcd.jpg",  "kivo0003.jpg", "KIVO1000.jpg",
                       "KIVO12345.jpg", "KIVO0007.png", "old-1-KIVO0001.jpg"};
    EXPECT_EQ(ListPhotographs(folder), (Names{"KIVO0002.jpg", "KIVO0007.jpg", "KIVO0012.jpg",
                                              "KIVO1000.jpg", "KIVO1234.jpg"}));
    EXPECT_TRUE(ListPhotographs({}).empty());
}

TEST(PhotoInformation, ComesFromTheDescription) {
    const struct {
        const char* description;
        const char* title;
        const char* size;
        bool isHdr;
    } cases[] = {{"DSLR (Sepia),1.5X", "DSLR (Sepia)", "1.5X 1600 x 960", false},
                 {"KIVO (Normal),1.5X,HDR", "KIVO (Normal)", "1.5 1600 x 960", true},
                 {"", "", "1600 x 960", false},
                 {"A dune", "A dune", "1600 x 960", false},
                 {",1X", ",1X", "1600 x 960", false},
                 {"HDR,1X", "HDR", "1X 1600 x 960", false},
                 {"An HDR", "An HDR", "1600 x 960", false},
                 {"xHDR,1X", "xHDR", "1X 1600 x 960", false},
                 {"a,HDR", "a", "1600 x 960", true}};
    for (const auto& c : cases) {
        EXPECT_EQ(TitleOf(c.description), c.title);
        EXPECT_EQ(SizeTextOf(c.description, {1600, 960}), c.size);
        EXPECT_EQ(TellsOfHdr(c.description), c.isHdr) << c.description;
    }
}

TEST(AlbumLayout, GivesPhotographsTheirProportions) {
    const struct {
        Dimension photo;
        Dimension bounds;
        Dimension shown;
    } cases[] = {{{1600, 960}, {626, 376}, {626, 376}}, {{800, 480}, {626, 376}, {626, 376}},
                 {{1280, 960}, {501, 376}, {501, 376}}, {{640, 480}, {501, 376}, {501, 376}},
                 {{480, 640}, {282, 376}, {282, 376}},  {{900, 900}, {282, 376}, {282, 282}},
                 {{9, 16}, {282, 376}, {212, 376}},     {{3000, 1000}, {626, 376}, {626, 209}},
                 {{1, 32767}, {282, 376}, {1, 376}}};
    for (const auto& c : cases) {
        EXPECT_EQ(AlbumLayout::BoundsFor(c.photo), c.bounds);
        EXPECT_EQ(AlbumLayout::Fitted(c.photo, c.bounds), c.shown);
    }
    EXPECT_EQ(AlbumLayout::WindowFor({501, 376}, false).x, 112);
    EXPECT_EQ(AlbumLayout::WindowFor({212, 376}, true).width, 282);
}

TEST(AlbumLayout, SlidesUntilThePrintHasLeftTheScreen) {
    for (const bool isForward : {false, true}) {
        const auto stepsOf = [isForward](bool isPortrait) {
            int step = 0;
            while (!AlbumLayout::HasSlidAway(AlbumLayout::SlideOffset(step, isForward), isPortrait))
                ++step;
            return step;
        };
        EXPECT_EQ(stepsOf(false), 10);
        EXPECT_EQ(stepsOf(true), 8);
    }
    EXPECT_LT(AlbumLayout::SlideOffset(1, true), 0);
}

}  // namespace
}  // namespace Kivo
