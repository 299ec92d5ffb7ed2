#include "backends/window/texture.h"

#include <cstdint>
#include <cstring>
#include <memory>

#include "osp/base/values/block_pool.h"

namespace Osp::Ui {

GdkTexture* MakeTexture(const Graphics::Surface& picture, Opacity opacity) {
    const auto [width, height] = picture.GetDimension();
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    auto block = std::make_unique<Base::Block>(pixels * 4);
    const auto* from = reinterpret_cast<const std::uint32_t*>(picture.Data());
    auto* to = reinterpret_cast<std::uint32_t*>(block->data());
    // The screen has no alpha, and what lies in its fourth byte is anything.
    const std::uint32_t alpha = opacity == Opacity::kOpaque ? 0xFF000000U : 0;
    for (std::size_t i = 0; i < pixels; ++i) to[i] = from[i] | alpha;

    const void* const data = block->data();
    const std::size_t size = block->size();
    GBytes* const bytes = g_bytes_new_with_free_func(
        data, size, [](gpointer owned) { delete static_cast<Base::Block*>(owned); },
        block.release());
    GdkTexture* const texture = gdk_memory_texture_new(width, height, GDK_MEMORY_DEFAULT, bytes,
                                                       static_cast<gsize>(picture.StrideBytes()));
    g_bytes_unref(bytes);
    return texture;
}

}  // namespace Osp::Ui
