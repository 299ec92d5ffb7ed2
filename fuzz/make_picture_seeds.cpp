// Writes the pictures that fuzzing starts from into a folder.
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cmake/product.h"
#include "develop/pictures/picture_files.h"
#include "develop/pictures/picture_format.h"
#include "osp/media/picture/exif.h"

namespace {

using namespace Kivo::Tools;
using Osp::Graphics::Dimension;
using Osp::Media::EncodedPicture;

std::vector<std::uint8_t> MakePixels(const Dimension& size) {
    std::vector<std::uint8_t> pixels(PackedSize(size, Osp::Media::PixelLayout::kRgb));
    for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<std::uint8_t>(i * 7);
    return pixels;
}

Metadata MakeMetadata(const Dimension& size) {
    Osp::Media::ExifInfo info;
    info.description = "A seed";
    info.dateTimeOriginal = "2024:05:06 07:08:09";
    info.offsetTimeOriginal = "+01:00";
    info.software = Kivo::kProductName;
    info.orientation = 6;
    info.size = size;
    constexpr std::string_view kProfile = "................RGB XYZ ";
    return {Osp::Media::BuildExifSegment(info), {kProfile.begin(), kProfile.end()}};
}

Problem WriteSeed(const std::string& folder, const char* extension, const Dimension& size) {
    const std::string name =
        folder + "/" + std::to_string(size.width) + "x" + std::to_string(size.height) + extension;
    const std::optional<PictureFormat> format = FormatOfName(name);
    if (!format) return name + ": no picture's extension";
    const std::vector<std::uint8_t> pixels = MakePixels(size);
    EncodedPicture encoded;
    const Problem problem =
        EncodePicture(*format, PackedView(pixels.data(), size, Osp::Media::PixelLayout::kRgb),
                      MakeMetadata(size), encoded);
    return problem.empty() ? WriteFile(name, encoded).problem : problem;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: make-picture-seeds FOLDER\n", stderr);
        return 2;
    }
    for (const char* extension : {".jpg", ".png", ".ppm"}) {
        for (const Dimension size : {Dimension{1, 1}, {17, 9}, {40, 33}}) {
            const Problem problem = WriteSeed(argv[1], extension, size);
            if (problem.empty()) continue;
            std::fprintf(stderr, "make-picture-seeds: %s\n", problem.c_str());
            return 1;
        }
    }
    return 0;
}
