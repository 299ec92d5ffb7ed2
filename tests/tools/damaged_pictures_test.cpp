// Files that are not what they seem.
#include <filesystem>

#include "tools/develop_fixture.h"

namespace Kivo::Testing {
namespace {

std::string BigEndian(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
    return bytes;
}

std::uint32_t Crc32(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        crc ^= static_cast<std::uint8_t>(byte);
        for (int i = 0; i < 8; ++i) crc = crc >> 1 ^ (crc % 2 == 0 ? 0 : 0xEDB88320U);
    }
    return ~crc;
}

std::string PngChunk(const std::string& typeAndData) {
    return BigEndian(static_cast<std::uint32_t>(typeAndData.size() - 4)) + typeAndData +
           BigEndian(Crc32(typeAndData));
}

/// A PNG of which there is little more than the claim to be so large.
std::string LyingPng(std::uint32_t width, std::uint32_t height) {
    return "\x89PNG\r\n\x1A\n" +
           PngChunk("IHDR" + BigEndian(width) + BigEndian(height) +
                    std::string("\x08\x02\0\0\0", 5)) +
           PngChunk(std::string("IDAT\x78\x9C\x63\0\0", 9)) + PngChunk("IEND");
}

/// A JPEG that claims to be so large.
std::string LyingJpeg(unsigned width, unsigned height) {
    std::string jpeg = EncodeJpeg(RandomPicture(64, 64, Look::kGradient, 3));
    const std::size_t frame = jpeg.find("\xFF\xC0");
    const char size[] = {static_cast<char>(height >> 8), static_cast<char>(height),
                         static_cast<char>(width >> 8), static_cast<char>(width)};
    return jpeg.replace(frame + 5, 4, size, 4);
}

class DamagedPicturesTest : public DevelopTest {
  protected:
    void ExpectUseless(const std::string& name, const std::string& content,
                       const std::string& part) {
        const std::string in = Write(name, content);
        ExpectRefusal({in, "-o", At("out.jpg")}, 1, in + ": " + part);
        ExpectRefusal({"--secondary", in, "-o", At("out.png")}, 1, in + ": " + part);
        ExpectRefusal({"--sheet", in, "-o", At("out.png")}, 1, in + ": " + part);
    }

    void SetUp() override { Write("out.jpg", "an older output, which has to stay"); }
};

TEST_F(DamagedPicturesTest, ThatAreNoPicturesAreRefused) {
    const std::string part = "this is not a JPEG, PNG or binary PPM picture";
    ExpectUseless("empty.jpg", "", part);
    ExpectUseless("text.png", "Dear diary", part);
    ExpectUseless("other.ppm", "P5 1 1 255\nx", part);
    ExpectUseless("start.jpg", "\xFF\xD8", part);
}

TEST_F(DamagedPicturesTest, WithLyingHeadersAreRefused) {
    const std::string part = "the picture's header is damaged, or it is larger than 64 million";
    ExpectUseless("huge.jpg", LyingJpeg(60000, 60000), part);
    ExpectUseless("huge.png", LyingPng(60000, 60000), part);
    ExpectUseless("endless.png", LyingPng(0x7FFFFFFF, 0x7FFFFFFF), part);
    ExpectUseless("huge.ppm", "P6 60000 60000 255\nabc", part);
    ExpectUseless("nothing.jpg", LyingJpeg(0, 64), part);
    ExpectUseless("wide.ppm", "P6 40000 1 255\n" + std::string(120000, 'x'), part);
    ExpectUseless("bare.jpg", "\xFF\xD8\xFF\xD9", part);
}

TEST_F(DamagedPicturesTest, ThatHoldLessThanTheyClaimAreRefused) {
    const std::string part = "the picture is damaged, cut off or of a kind that is not supported";
    ExpectUseless("large.jpg", LyingJpeg(8000, 8000), part);
    ExpectUseless("large.png", LyingPng(8000, 8000), part);
    ExpectUseless("large.ppm", "P6 8000 8000 255\nabc", part);
}

TEST_F(DamagedPicturesTest, ThatAreCutOffAnywhereAreRefused) {
    const Picture picture = RandomPicture(90, 60, Look::kNoise, 4);
    const std::string input = Write("in.ppm", ToPpm(picture));
    for (const char* name : {"whole.jpg", "whole.png", "whole.ppm"}) {
        Develop({"-t", "MIX", input, input, "-o", At(name)});
        const std::string whole = Read(name);
        for (int cut = 1; cut < 8; ++cut) {
            const std::string in =
                Write(std::string("cut-") + name,
                      whole.substr(0, whole.size() * static_cast<unsigned>(cut) / 8));
            ExpectRefusal({in, "-o", At("out.jpg")}, 1, in + ": the picture");
        }
        // The last byte alone ends a JPEG; a PNG ends with a chunk that nobody misses.
        if (std::string(name) == "whole.png") continue;
        const std::string in = Write(std::string("cut-") + name, whole.substr(0, whole.size() - 1));
        ExpectRefusal({in, "-o", At("out.jpg")}, 1,
                      in + ": the picture is damaged, cut off or of a kind that is not supported");
    }
}

TEST_F(DamagedPicturesTest, OfAnyFrameAreNamed) {
    const std::string good = Write("good.ppm", ToPpm(RandomPicture(40, 40, Look::kNoise, 5)));
    const std::string other = Write("other.ppm", ToPpm(RandomPicture(40, 41, Look::kNoise, 5)));
    const std::string cut = Write("cut.ppm", Read("good.ppm").substr(0, 3000));
    const std::string out = At("out.jpg");
    for (std::size_t i = 0; i < 4; ++i) {
        std::vector<std::string> arguments{"-t", "QUAD", good, good, good, good, "-o", out};
        arguments[2 + i] = cut;
        ExpectRefusal(arguments, 1, cut + ": the picture is damaged");
        arguments[2 + i] = At("missing.ppm");
        ExpectRefusal(arguments, 1, "missing.ppm: no such file");
    }
    ExpectRefusal({"-t", "MIX", good, other, "-o", out}, 1,
                  "this one is 40 x 41 and the first is 40 x 40");
}

TEST_F(DamagedPicturesTest, AreTheOnlyOnesThatLackRoomForTheirType) {
    const std::string out = At("out.ppm");
    const std::string narrow = Write("narrow.ppm", ToPpm(RandomPicture(3, 9, Look::kNoise, 6)));
    const std::string low = Write("low.ppm", ToPpm(RandomPicture(9, 1, Look::kNoise, 6)));
    const std::string dot = Write("dot.ppm", ToPpm(RandomPicture(1, 1, Look::kNoise, 6)));
    ExpectRefusal({"-t", "ACTION", narrow, narrow, narrow, narrow, "-o", out}, 1, "ACTION takes");
    ExpectRefusal({"-t", "ACTION", "--secondary", low, low, low, low, "-o", out}, 1,
                  "ACTION takes");
    ExpectRefusal({"-t", "QUAD", low, low, low, low, "-o", out}, 1, "QUAD takes");
    Develop({"-t", "ACTION", low, low, low, low, "-o", out});
    Develop({"-t", "ACTION", "--secondary", narrow, narrow, narrow, narrow, "-o", out});
    for (const char* type : {"KIVO", "DSLR", "TILT"}) {
        for (const char* effect : {"Fisheye", "Concave", "Edge", "Mirror"}) {
            Develop({"-t", type, "-e", effect, "--hdr", dot, "-o", out});
        }
    }
}

TEST_F(DamagedPicturesTest, AreNotTheOnlyTrouble) {
    const std::string in = Write("in.ppm", ToPpm(RandomPicture(20, 20, Look::kNoise, 7)));
    ExpectRefusal({At("missing.jpg"), "-o", At("out.jpg")}, 1, "missing.jpg: no such file");
    ExpectRefusal({folder_.Path(), "-o", At("out.jpg")}, 1,
                  folder_.Path() + ": this is not a regular file");
    std::filesystem::create_directory(At("folder.jpg"));
    ExpectRefusal({in, "-o", At("folder.jpg")}, 1, "folder.jpg: this is a folder");
    ExpectRefusal({in, "-o", At("no/such/folder.jpg")}, 1, "folder.jpg: no such file or folder");
    for (const char* name : {"out", "out.gif", "jpg", ".jpg", "out.jpg.bak"}) {
        ExpectRefusal({in, "-o", At(name)}, 1, "the extension is none of");
    }
}

}  // namespace
}  // namespace Kivo::Testing
