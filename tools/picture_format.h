// The kinds of picture files that the tool reads and writes.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include <osp/graphics/dimension.h>

#include "media/encoded_picture.h"
#include "media/pixel_view.h"
#include "problem.h"

/// Any thread, several at once.
namespace Kivo::Tools {

using Bytes = std::span<const std::uint8_t>;

enum class PictureFormat { kJpeg, kPng, kPpm };

/// From the extension, whatever its case.
std::optional<PictureFormat> FormatOfName(std::string_view path);

/// The size of the picture in a file with these bytes, whose first ones tell the format. Sizes that
/// nobody could hold in memory are a problem.
Problem ReadPictureSize(Bytes file, Osp::Graphics::Dimension& size);

/// Three bytes a pixel, into room for `size`, which is the picture's. Calls rowsDone(n) whenever
/// rows [0, n) are there. Returns false for a picture that is damaged, cut off or of another size,
/// which may show after some rows.
bool DecodePicture(Bytes file, const Osp::Graphics::Dimension& size, std::uint8_t* pixels,
                   const std::function<void(int)>& rowsDone);

/// `picture` is kRgb, or kRgba, whose fourth byte is dropped. JPEG takes `metadata`, whole
/// segments or nothing.
Problem EncodePicture(PictureFormat format, const Osp::Media::PixelView& picture, Bytes metadata,
                      Osp::Media::EncodedPicture& encoded);

}  // namespace Kivo::Tools
