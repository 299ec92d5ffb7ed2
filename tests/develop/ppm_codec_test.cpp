// Binary pixmaps, friendly and hostile.
#include "develop/pictures/ppm_codec.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/develop/develop_fixture.h"

namespace Kivo::Tools {
namespace {

using Osp::Graphics::Dimension;
using Testing::BytesOf;

TEST(PpmCodec, ReadsHeadersInEverySpelling) {
    for (const char* header :
         {"P6 3 2 255\n", "P6\n3 2\n255 ", "P6\t3\r\n2\f255\n",
          "P6\n# a comment\n3# 7 7\n2 # and one\n#\n255\n", "P6#\n3 2 255\n", "P6 003 02 0255 "}) {
        const std::string pixels = "abcdefghijklmnopqr";
        Dimension size;
        ASSERT_EQ(ReadPpmSize(BytesOf(header + pixels), size), result::kSuccess) << header;
        EXPECT_EQ(size, (Dimension{3, 2}));
        std::vector<std::uint8_t> decoded(18);
        ASSERT_EQ(DecodePpm(BytesOf(header + pixels + "more"), size, decoded.data()),
                  result::kSuccess);
        EXPECT_EQ(std::string(decoded.begin(), decoded.end()), pixels) << header;
    }
}

TEST(PpmCodec, RefusesWhatItCannotHoldOrDoesNotUnderstand) {
    for (const char* text :
         {"", "P", "P6", "P63 2 255\n", "P5 3 2 255\n", "P6 3 2 255", "P6 3 2 0\n",
          "P6 3 2 65536\n", "P6 3 2\n", "P6 3 2x 255\n", "P6 -3 2 255\n", "P6 0 2 255\n",
          "P6 3 0 255\n", "P6 4294967299 2 255\n", "P6 99999999999999999999 1 255\n",
          "P6 # no end"}) {
        Dimension size{7, 7};
        EXPECT_EQ(ReadPpmSize(BytesOf(text), size), result::kInvalidFormat) << text;
        EXPECT_EQ(size, (Dimension{7, 7}));
    }
    Dimension size;
    EXPECT_EQ(ReadPpmSize(BytesOf("P6 32768 1 255\n"), size), result::kOutOfRange);
}

TEST(PpmCodec, BringsOtherRangesToThatOfAByte) {
    const auto decoded = [](const std::string& file) {
        std::vector<std::uint8_t> pixels(3);
        EXPECT_EQ(DecodePpm(BytesOf(file), {1, 1}, pixels.data()), result::kSuccess);
        return pixels;
    };
    using Pixel = std::vector<std::uint8_t>;
    EXPECT_EQ(decoded("P6 1 1 100\n" + std::string{0, 50, 100}), (Pixel{0, 128, 255}));
    EXPECT_EQ(decoded("P6 1 1 1\n" + std::string{0, 1, 9}), (Pixel{0, 255, 255}));
    EXPECT_EQ(decoded("P6 1 1 65535\n" + std::string("\x00\x80\x00\x81\xFF\xFF", 6)),
              (Pixel{0, 1, 255}));
    EXPECT_EQ(decoded("P6 1 1 1000\n" + std::string("\x00\x64\x01\xF4\xFF\xFF", 6)),
              (Pixel{26, 128, 255}));
    std::vector<std::uint8_t> pixels(3);
    for (const char* cutOff : {"P6 1 1 256\n12345", "P6 1 1 255\n12"}) {
        EXPECT_EQ(DecodePpm(BytesOf(cutOff), {1, 1}, pixels.data()), result::kInvalidFormat);
    }
}

TEST(PpmCodec, WritesRowsWithoutTheirGaps) {
    const std::string rows = "abcdef..ghijkl..";
    Osp::Media::EncodedPicture encoded;
    EncodePpm({BytesOf(rows).data(), {2, 2}, 8, Osp::Media::PixelLayout::kRgb}, encoded);
    EXPECT_EQ(std::string(encoded.Bytes().begin(), encoded.Bytes().end()),
              "P6\n2 2\n255\nabcdefghijkl");
}

}  // namespace
}  // namespace Kivo::Tools
