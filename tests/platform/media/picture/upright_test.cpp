// The eight ways in which a picture can lie in its file.
#include "osp/media/picture/upright.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

#include "tests/platform/media/picture/picture_bytes.h"

namespace Osp::Media {
namespace {

/// A letter a pixel, rows separated by slashes.
Picture Draw(const std::string& letters) {
    const auto width = static_cast<int>(letters.find('/'));
    Picture picture(width, static_cast<int>(letters.size() + 1) / (width + 1));
    auto out = picture.bytes.begin();
    for (const char letter : letters) {
        if (letter == '/') continue;
        for (int c = 0; c < 3; ++c) *out++ = static_cast<std::uint8_t>(letter + 50 * c);
    }
    return picture;
}

TEST(Upright, TurnsEveryOrientationInEveryLayout) {
    // How "abc/def" is stored when the camera was held so or so.
    const std::map<int, std::string> stored{
        {1, "abc/def"},  {2, "cba/fed"},  {3, "fed/cba"},  {4, "def/abc"}, {5, "ad/be/cf"},
        {6, "cf/be/ad"}, {7, "fc/eb/da"}, {8, "da/eb/fc"}, {0, "abc/def"}, {9, "abc/def"}};
    const Picture expected = Draw("abc/def");
    for (const auto& [orientation, letters] : stored) {
        const Picture in = Draw(letters);
        const bool isTransposed = in.width != expected.width;
        EXPECT_EQ(IsTransposed(orientation), isTransposed) << orientation;
        EXPECT_EQ(IsUpright(orientation), letters == "abc/def") << orientation;
        for (const PixelLayout layout : kLayouts) {
            const Bytes pixels = InLayout(in, layout, 7);
            Bytes out(pixels.size());
            TurnUpright(PackedView(pixels.data(), SizeOf(in), layout), orientation, out.data());
            EXPECT_EQ(out, InLayout(expected, layout, 7)) << orientation;
        }
    }
}

}  // namespace
}  // namespace Osp::Media
