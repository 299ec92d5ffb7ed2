// Pictures in files, no larger than a place that shows them.
#pragma once

#include <optional>
#include <string>

#include <osp/base/result.h>
#include <osp/graphics/dimension.h>

#include "osp/base/values/block_pool.h"

/// Paths are real ones; failures are those of picture_file.h. Any thread.
namespace Osp::Media {

/// The largest size of the same proportions, to the nearest pixel, that `most` holds, and never
/// larger than `size` itself. All sides are positive.
Graphics::Dimension SizeWithin(const Graphics::Dimension& size, const Graphics::Dimension& most);

/// The size of a picture as it is looked at: turned as its EXIF says. Empty for what is no picture.
std::optional<Graphics::Dimension> ReadUprightSize(const std::string& path);

/// The picture upright, scaled down to SizeWithin(its size, most), packed R, G, B, A. Sides of
/// `most` are positive.
result DecodeWithin(const std::string& path, const Graphics::Dimension& most, Base::Block& rgba,
                    Graphics::Dimension& size);

}  // namespace Osp::Media
