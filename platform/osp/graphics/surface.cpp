#include "osp/graphics/surface.h"

#include <algorithm>

namespace Osp::Graphics {

Surface::Surface(Dimension dimension, Kind kind)
    : dimension_(dimension),
      block_(static_cast<std::size_t>(dimension.width) * 4 *
             static_cast<std::size_t>(dimension.height)) {
    if (kind == Kind::kWithAlpha) std::fill_n(block_.data(), block_.size(), std::uint8_t{0});
    surface_.reset(cairo_image_surface_create_for_data(
        block_.data(), kind == Kind::kWithAlpha ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24,
        dimension.width, dimension.height, StrideBytes()));
}

}  // namespace Osp::Graphics
