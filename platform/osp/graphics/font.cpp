#include <osp/graphics/font.h>

namespace Osp::Graphics {

result Font::Construct(int style, int size) {
    constexpr int kAllStyles = kFontStylePlain | kFontStyleBold | kFontStyleItalic;
    if (style < 1 || style > kAllStyles || size <= 0) return result::kInvalidArgument;
    style_ = style;
    size_ = size;
    return result::kSuccess;
}

}  // namespace Osp::Graphics
