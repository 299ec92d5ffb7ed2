// A typeface at one size.
#pragma once

#include <osp/base/result.h>

namespace Osp::Graphics {

constexpr int kFontStylePlain = 1;
constexpr int kFontStyleBold = 2;
constexpr int kFontStyleItalic = 4;

/// The platform's typeface. A font of size S has lines S pixels high.
class Font {
  public:
    /// `style` is a sum of font styles; kInvalidArgument unless it is 1 to 7 and `size`, in
    /// pixels, positive. A failure leaves the font as it was.
    result Construct(int style, int size);

    int GetStyle() const { return style_; }
    int GetSize() const { return size_; }

  private:
    int style_ = kFontStylePlain;
    int size_ = 0;
};

}  // namespace Osp::Graphics
