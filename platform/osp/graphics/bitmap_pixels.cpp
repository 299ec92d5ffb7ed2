// At every moment at least one of rgba_, surface_ and loader_ is there, and what is there shows the
// same picture; a second form is added and never replaces the first. That is why the methods are
// const although they fill in members, and why a bitmap can be shared without copying. The loader
// runs at most once, and a picture that it cannot load stays transparent: a button without its
// picture is better than an application that does not start.
#include "osp/graphics/bitmap_pixels.h"

#include <cassert>
#include <libyuv/convert_argb.h>
#include <libyuv/convert_from_argb.h>
#include <libyuv/planar_functions.h>
#include <utility>

namespace Osp::Graphics {

BitmapPixels::BitmapPixels(Dimension dimension, Base::Block rgba)
    : dimension_(dimension), rgba_(std::move(rgba)) {
    assert(dimension.width > 0 && dimension.height > 0);
    assert(rgba_->size() == static_cast<std::size_t>(dimension.width) * 4 *
                                static_cast<std::size_t>(dimension.height));
}

BitmapPixels::BitmapPixels(Dimension dimension, std::shared_ptr<Surface> surface)
    : dimension_(dimension), surface_(std::move(surface)) {
    assert(surface_ && surface_->GetDimension() == dimension);
}

BitmapPixels::BitmapPixels(Dimension dimension, Loader loader)
    : dimension_(dimension), loader_(std::move(loader)) {
    assert(loader_);
}

const std::uint8_t* BitmapPixels::Rgba() const {
    if (!rgba_) {
        const Surface& drawable = Drawable();
        const int stride = drawable.StrideBytes();
        rgba_.emplace(static_cast<std::size_t>(stride) *
                      static_cast<std::size_t>(dimension_.height));
        // libyuv names formats by their value in a register: its ARGB lies in memory as B, G, R, A.
        libyuv::ARGBUnattenuate(drawable.Data(), stride, rgba_->data(), stride, dimension_.width,
                                dimension_.height);
        libyuv::ARGBToABGR(rgba_->data(), stride, rgba_->data(), stride, dimension_.width,
                           dimension_.height);
    }
    return rgba_->data();
}

const Surface& BitmapPixels::Drawable() const {
    if (surface_) return *surface_;
    surface_ = std::make_shared<Surface>(dimension_, Surface::Kind::kWithAlpha);
    if (loader_) {
        loader_(*surface_);
        loader_ = nullptr;
    } else {
        const int stride = surface_->StrideBytes();
        libyuv::ABGRToARGB(rgba_->data(), stride, surface_->Data(), stride, dimension_.width,
                           dimension_.height);
        libyuv::ARGBAttenuate(surface_->Data(), stride, surface_->Data(), stride, dimension_.width,
                              dimension_.height);
    }
    surface_->MarkDirty();
    return *surface_;
}

}  // namespace Osp::Graphics
