// The memory is ours and not Cairo's, so that it comes from the pool and codecs can write into it.
// Rows have no gaps, which is also the stride that Cairo wants for 32 bits a pixel, and so a
// surface and a packed picture of the same size have the same layout.
#include "osp/graphics/surface.h"

#include <algorithm>
#include <cassert>

namespace Osp::Graphics {

Surface::Surface(Dimension dimension, Kind kind)
    : dimension_(dimension),
      block_(static_cast<std::size_t>(dimension.width) * 4 *
             static_cast<std::size_t>(dimension.height)) {
    assert(dimension.width > 0 && dimension.height > 0);
    assert(cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, dimension.width) == StrideBytes());
    if (kind == Kind::kWithAlpha) std::fill_n(block_.data(), block_.size(), std::uint8_t{0});
    surface_.reset(cairo_image_surface_create_for_data(
        block_.data(), kind == Kind::kWithAlpha ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24,
        dimension.width, dimension.height, StrideBytes()));
}

}  // namespace Osp::Graphics
