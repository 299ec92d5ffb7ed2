#include <cassert>
#include <glib.h>

#include <osp/base/integer.h>
#include <osp/base/string.h>

#include "osp/base/owner.h"

namespace Osp::Base {

namespace {

std::u16string ToUtf16(std::string_view utf8) {
    const auto length = static_cast<gssize>(utf8.size());
    const Owner<char, g_free> valid(g_utf8_make_valid(utf8.data(), length));
    glong units = 0;
    const Owner<gunichar2, g_free> text(g_utf8_to_utf16(valid.get(), -1, nullptr, &units, nullptr));
    return {text.get(), text.get() + units};
}

}  // namespace

String::String(const char* utf8) : text_(ToUtf16(utf8)) {}

String::String(std::string_view utf8) : text_(ToUtf16(utf8)) {}

String& String::Append(const String& text) {
    text_ += text.text_;
    return *this;
}

String& String::Append(int value) {
    return Append(Integer::ToString(value));
}

result String::Insert(const String& text, int position) {
    if (position < 0 || position > GetLength()) return result::kOutOfRange;
    text_.insert(static_cast<std::size_t>(position), text.text_);
    return result::kSuccess;
}

bool String::StartsWith(const String& prefix, int startPosition) const {
    if (startPosition < 0 || startPosition > GetLength()) return false;
    return text_.compare(static_cast<std::size_t>(startPosition), prefix.text_.size(),
                         prefix.text_) == 0;
}

int String::IndexOf(const String& text, int startPosition) const {
    if (startPosition < 0 || startPosition > GetLength()) return -1;
    const auto at = text_.find(text.text_, static_cast<std::size_t>(startPosition));
    return at == std::u16string::npos ? -1 : static_cast<int>(at);
}

void String::Replace(const String& text, const String& replacement) {
    assert(!text.IsEmpty());
    std::u16string result;
    std::size_t done = 0;
    for (std::size_t at; (at = text_.find(text.text_, done)) != std::u16string::npos;) {
        result.append(text_, done, at - done).append(replacement.text_);
        done = at + text.text_.size();
    }
    text_ = result.append(text_, done);
}

result String::SubString(int startPosition, int length, String& out) const {
    if (startPosition < 0 || length < 0 || startPosition > GetLength() - length) {
        return result::kOutOfRange;
    }
    out.text_ =
        text_.substr(static_cast<std::size_t>(startPosition), static_cast<std::size_t>(length));
    return result::kSuccess;
}

std::string String::ToUtf8() const {
    std::string utf8;
    utf8.reserve(text_.size());
    for (std::size_t i = 0; i < text_.size(); ++i) {
        gunichar c = text_[i];
        const bool isPair = c >= 0xD800 && c < 0xDC00 && i + 1 < text_.size() &&
                            text_[i + 1] >= 0xDC00 && text_[i + 1] < 0xE000;
        if (isPair) c = 0x10000 + ((c - 0xD800) << 10) + (text_[++i] - 0xDC00U);
        if (c >= 0xD800 && c < 0xE000) c = 0xFFFD;  // half a pair
        char bytes[6];
        utf8.append(bytes, static_cast<std::size_t>(g_unichar_to_utf8(c, bytes)));
    }
    return utf8;
}

}  // namespace Osp::Base
