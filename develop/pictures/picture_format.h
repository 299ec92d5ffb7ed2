// The kinds of picture files that the tool reads and writes.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include <osp/graphics/dimension.h>

#include "develop/problem.h"
#include "osp/media/picture/encoded_picture.h"
#include "osp/media/picture/pixel_view.h"

/// Any thread, several at once.
namespace Kivo::Tools {

using Bytes = std::span<const std::uint8_t>;

enum class PictureFormat { kJpeg, kPng, kPpm };

/// From the extension, whatever its case.
std::optional<PictureFormat> FormatOfName(std::string_view path);

/// From the first bytes of a file.
std::optional<PictureFormat> FormatOfContent(Bytes file);

/// What a file says about its picture beside the pixels.
struct Metadata {
    std::vector<std::uint8_t> exif;           // a whole segment of a JPEG, or nothing
    std::vector<std::uint8_t> colourProfile;  // or nothing

    /// Both, as segments of a JPEG.
    std::vector<std::uint8_t> Segments() const;
};

/// The colour profile in a file of any format, if it has one for colours.
std::vector<std::uint8_t> ReadColourProfile(Bytes file);

/// What a failure to read a picture's rows means to the user.
Problem DamageInWords(result r);
/// What the outcome of writing a picture means to the user.
Problem EncodingInWords(result r);

/// The size of the picture in a file with these bytes, whose first ones tell the format. Sizes that
/// nobody could hold in memory are a problem.
Problem ReadPictureSize(Bytes file, Osp::Graphics::Dimension& size);

/// Three bytes a pixel, into room for `size`, which is the picture's. Calls rowsDone(n) whenever
/// rows [0, n) are there. What is wrong with a file that has all its rows is in `oddity`, in words,
/// before the last ones are announced. Fails for a picture that is damaged, cut off or of another
/// size, which may show after some rows.
result DecodePicture(Bytes file, const Osp::Graphics::Dimension& size, std::uint8_t* pixels,
                     const std::function<void(int)>& rowsDone, std::string& oddity);

/// `picture` is kRgb, or kRgba, whose fourth byte is dropped. JPEG takes all of `metadata`, PNG the
/// colour profile.
Problem EncodePicture(PictureFormat format, const Osp::Media::PixelView& picture,
                      const Metadata& metadata, Osp::Media::EncodedPicture& encoded);

}  // namespace Kivo::Tools
