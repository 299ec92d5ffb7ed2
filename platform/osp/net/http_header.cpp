#include <algorithm>
#include <glib.h>
#include <string_view>

#include <osp/net/http/http_header.h>

namespace Osp::Net::Http {

namespace {

constexpr std::string_view kTokenMarks = "!#$%&'*+-.^_`|~";

bool IsToken(const std::string& name) {
    return !name.empty() && std::ranges::all_of(name, [](char c) {
        return g_ascii_isalnum(c) || kTokenMarks.find(c) != std::string_view::npos;
    });
}

bool HasControls(const std::string& value) {
    return std::ranges::any_of(value, [](char c) { return g_ascii_iscntrl(c); });
}

}  // namespace

result HttpHeader::AddField(const Base::String& name, const Base::String& value) {
    std::pair<std::string, std::string> field{name.ToUtf8(), value.ToUtf8()};
    if (!IsToken(field.first) || HasControls(field.second)) return result::kInvalidArgument;
    fields_.push_back(std::move(field));
    return result::kSuccess;
}

}  // namespace Osp::Net::Http
