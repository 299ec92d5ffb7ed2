#include <charconv>

#include <osp/base/integer.h>

namespace Osp::Base {

result Integer::Parse(const String& text, int& value) {
    const std::string digits = text.ToUtf8();
    const char* const end = digits.data() + digits.size();
    int parsed = 0;
    const auto [stop, error] = std::from_chars(digits.data(), end, parsed);
    if (error != std::errc() || stop != end) return result::kInvalidFormat;
    value = parsed;
    return result::kSuccess;
}

String Integer::ToString(int value) {
    return String(std::to_string(value));
}

}  // namespace Osp::Base
