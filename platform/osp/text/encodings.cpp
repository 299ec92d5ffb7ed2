#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include <osp/text/ascii_encoding.h>
#include <osp/text/utf8_encoding.h>

#include "osp/base/values/buffer_copy.h"

namespace Osp::Text {

using Base::ByteBuffer;

namespace {

ByteBuffer* WithZeroN(const std::string& bytes) {
    const auto* const first = reinterpret_cast<const Base::byte*>(bytes.c_str());
    return Base::CopyToBuffer({first, bytes.size() + 1}).release();
}

}  // namespace

ByteBuffer* AsciiEncoding::GetBytesN(const Base::String& text) const {
    std::string ascii;
    std::ranges::transform(text.Units(), std::back_inserter(ascii),
                           [](char16_t unit) { return unit < 0x80 ? char(unit) : '?'; });
    return WithZeroN(ascii);
}

ByteBuffer* Utf8Encoding::GetBytesN(const Base::String& text) const {
    return WithZeroN(text.ToUtf8());
}

result Utf8Encoding::GetString(const ByteBuffer& bytes, Base::String& text) const {
    if (bytes.GetPointer() == nullptr) return result::kInvalidArgument;
    const auto remaining = bytes.Remaining();
    const auto end = std::ranges::find(remaining, 0);
    text = Base::String(std::string_view(reinterpret_cast<const char*>(remaining.data()),
                                         static_cast<std::size_t>(end - remaining.begin())));
    return result::kSuccess;
}

}  // namespace Osp::Text
